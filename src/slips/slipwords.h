#pragma once

#include "check/rules.h"

#include <QList>

namespace kervan {

class Grid;
struct SlipDocument;
struct SlipForm;
class SlipScreen;

/// The documents that a list goes into. Those of text exports have no button on any screen, and a
/// text export comes into the list by commands that have none either.
QList<const SlipDocument *> documentsOf(const SlipForm &form, bool ofBankList);
/// Whether a row of `l1` is one of the document's, ticked or not.
bool takesRow(const SlipScreen &screen, const SlipDocument &document, int row);

/// Values in which a filling finds words of its template: a rule per document of `l1` or `l2`.
QList<Rule> wordRules(const SlipScreen &screen, const Grid &grid, bool ofBankList);

} // namespace kervan
