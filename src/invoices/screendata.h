#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "store/program.h"

#include <QString>

namespace kervan {

// What both invoice screens load at their opening and look up later.

/// One row of table `firma`.
struct FirmaKayit
{
    QString frno, frkod, firma, kaskod, dkod, crkod, alkod, satkod;
};

// Each loads one table of the open database; a table that can't be read is a Failure.
/// The general VAT rate, of the table's first row.
void loadVatRate(LocalDb &db, TextField &kdyaz);
void loadFirms(LocalDb &db, ChoiceField &c3);
/// Unit word of the source, Logo unit code.
void loadUnits(LocalDb &db, Grid &lbrm);
/// Logo personnel code, personnel code of the source; the list begins with an empty entry.
void loadStaff(LocalDb &db, ChoiceField &pers, Grid &persl);
/// Opens fatozkod.dbs itself; the list begins with an empty entry.
void loadSpecialCodes(Program &program, ChoiceField &c4);

/// The first row of this firm; without one it is a Failure.
FirmaKayit findFirm(Program &program, const QString &firma);

/// The Logo unit code of a unit word, or an empty text.
QString birimbul(const Grid &lbrm, const QString &kelime);
/// The Logo personnel code of a source's personnel code, or an empty text.
QString perseslestir(const Grid &persl, const QString &kod);

/// The two exemption texts of kdvmu.kvz; one that is missing keeps its value.
void kdvmuafiyetyukle(const Program &program, QString &genel, QString &satir);

/// The cash counter as it is stored; empty if there is none.
QString kasacariislemno(const Program &program);

} // namespace kervan
