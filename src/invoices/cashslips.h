#pragma once

#include "base/grid.h"
#include "base/notes.h"
#include "logoxml/template.h"
#include "store/program.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTime>

namespace kervan {

// Small invoices are taken as paid in cash: each has a cash slip of its own, numbered at the
// reading of the list and written beside the invoice document.

/// The cash counter as it is stored; 0 if there is none that is a number. `unreadable` is why one
/// that is there could not be read.
double kasacariislemno(const Program &program, std::optional<Failure> &unreadable);
/// Stores the cash counter; a Failure names the file.
void kasacariislemnokaydet(const Program &program, double counter);

/// Numbers all rows of the invoice list from the stored counter on: "NT" and "KN" with six digits.
/// Gives why the counter could not be read, if it is there: they begin anew then.
std::optional<Failure> faturakasafisnoyaz(const Program &program, Grid &l1);

/// Whether the grand total of the row lies below the cash limit, so that it gets a slip when it is
/// ticked. One that is no number is a Failure.
bool isBelowCashLimit(const Grid &l1, int row);

/// How a slip's template is filled: its placeholders in their order.
QList<QByteArray> kasaSozcukleri();
/// The values of a row's slip, one to each of them. A date that is none is a Failure.
QStringList kasaDegerleri(const Grid &l1, int row, const QString &kasakodu, QTime time);

/// Writes the slips of the ticked rows whose grand total lies below the cash limit into the file
/// named like the invoice document `dosya`, its last four characters replaced by "-KASANAKIT.xml",
/// and shows the box behind it. The file is written without a slip too. The first cell that can't
/// be read, a file that can't be written, and a name of fewer than four characters is a Failure,
/// and the old file stays. A file that is written is told in the notes.
void exeldenkasanakitkaydet(Program &program, const Grid &l1, const QString &kasakodu,
                            const QString &dosya, Notes &notes,
                            Values spelling = Values::AsTheyStand);

} // namespace kervan
