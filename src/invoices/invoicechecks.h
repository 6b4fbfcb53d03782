#pragma once

#include "base/grid.h"
#include "check/finding.h"
#include "check/readinessrules.h"
#include "check/rules.h"
#include "check/writtendocuments.h"
#include "invoices/invoicedefinitions.h"
#include "invoices/invoicedocument.h"
#include "invoices/invoicelist.h"
#include "logolink/screenlink.h"
#include "store/program.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

namespace kervan {

// What the two invoice screens are checked for alike. Nothing here asks a database or Logo: it goes
// by what the screen's loading and its last read have learnt, and by the source, read again in
// pieces.

/// What only the frame knows. A hook that is not given finds nothing.
struct InvoiceHooks
{
    /// Whether another open screen counts on the same counter file.
    std::function<bool()> counterIsShared = nullptr;
    ContentOf contentOf = nullptr;
};

/// The pieces of an invoice screen that the shared rules look at; they outlive the rules.
struct InvoiceScreen
{
    const Program &program;
    const InvoiceList &liste;
    const InvoiceDefinitions &tanimlar;
    const ScreenLink &link;
    QString kaynakAdi;  ///< of the staff's codes: "SAP"
    QString linkCure;   ///< what to do without a connection
    QString numberless; ///< what becomes of an invoice without a number
    /// Columns of `l1` whose cells go into the head of an invoice, and the amounts of a row.
    QList<std::pair<int, QString>> values, amounts;
    InvoiceTemplates templates;
    /// A row's head without what the screen's choices give, and that alone.
    std::function<InvoiceHead(int row)> headOf;
    std::function<InvoiceHead()> chosenHead;
    /// The same of lines, where a screen gives them any.
    std::function<QList<InvoiceGoods>()> chosenGoods = nullptr;
};

/// Database, connection, e-invoice marks, firm, and what each row shows by itself: number, date,
/// person, amounts, letters, words of the templates.
QList<Rule> sharedRules(const InvoiceScreen &screen);

/// Two rules for a value of a definition that goes into a document: markup and letters.
QList<Rule> definitionValueRules(const QString &name, const QString &cure,
                                 const std::function<QString()> &value);

/// The rule with the row's invoice number in front of what it finds.
Rule withInvoice(Rule rule, const Grid &l1);

/// A rule of lines: what a survey tells by it.
struct LineRule
{
    const char16_t *name;
    Level level;
    const char16_t *cure;
};
/// Its finding at a row of `l1`, whose invoice it names; without a row it is of the screen.
Finding findingOf(const LineRule &rule, const QString &text, int row = -1,
                  const QString &number = {}, int column = -1);

/// What is wrong with a product code, which many lines give again.
struct CodeFaults
{
    CodeFaults() = default;
    /// `line` is the template of a line, filled by lineWords().
    CodeFaults(const QString &code, const Sablon &line);

    /// Each with its rule.
    QList<std::pair<const LineRule *, QString>> faults;
};

/// Missing definitions, gathered while lines go by.
class Gaps
{
public:
    void clear();
    /// So many lines of so many documents need it. What is told first names it.
    void need(const QString &kind, const QString &code, const QString &screen, int lines,
              int documents, const QString &name = {});
    const QList<Gap> &all() const { return m_gaps; }

private:
    QList<Gap> m_gaps;
    QHash<std::pair<QString, QString>, qsizetype> m_places; // kind and code
};

/// The firm's codes that are empty.
void needFirm(Gaps &gaps, const InvoiceDefinitions &tanimlar, int lines, int documents);
/// The person of a row, where its definition is missing.
void needPerson(Gaps &gaps, const Grid &l1, int row, int lines);

/// How invoices of a list are found in documents: of the kind that is chosen, by their numbers.
ListedRows listedInvoices(const Grid &l1, const QString &faturaTuru, ListedRows::Amount amountIs);

/// A code as a sentence shows it: an empty one as such.
QString shown(const QString &code);

/// A few of many, as a sentence lists them: "P1, P2 ve 3 ürün daha".
QString someOf(const QStringList &names, const QString &what);

} // namespace kervan
