#pragma once

#include "support/fakes.h"
#include "support/ziparchive.h"
#include "workbook/workbook.h"

namespace kervan {

/// A whole sheet: fields between "|", lines as rows; in front of each field the letter of its kind
/// (Text, Number, Date, Boolean, or a point for an empty one).
inline QString told(const Sheet &sheet)
{
    QStringList rows;
    for (int row = 0; row < sheet.rows(); ++row) {
        QStringList fields;
        for (int field = 0; field < sheet.columns(); ++field)
            fields << u".TNDB"[int(sheet.kind(row, field))] + sheet.text(row, field);
        rows << fields.join(u'|');
    }
    return rows.join(u'\n');
}

/// A package of hand-written parts: rows of the only sheet, and what else is not as usual.
struct Parts
{
    QByteArray rows;
    QByteArray strings = {};
    QByteArray styles = {};
    QByteArray workbookProperties = {};
    QByteArray beforeSheet = {};
};

inline ZipEntries package(const Parts &parts)
{
    return {{"_rels/.rels",
             "<Relationships><Relationship Id='a' Target='/xl/book.xml' Type="
             "'http://purl.oclc.org/ooxml/officeDocument/relationships/officeDocument'/>"
             "</Relationships>"},
            {"xl/book.xml",
             "<x:workbook xmlns:x='http://purl.oclc.org/ooxml/spreadsheetml/main'>" +
                 parts.workbookProperties +
                 "<x:sheets><x:sheet name='Grafik' r:id='c'/><x:sheet name='SATIŞ LİSTESİ' "
                 "state='hidden' r:id='s'/></x:sheets></x:workbook>"},
            {"xl/_rels/book.xml.rels",
             "<Relationships><Relationship Id='c' Type='x/chartsheet' Target='chart.xml'/>"
             "<Relationship Id='s' Type='x/worksheet' Target='../tables/./t.xml'/>"
             "<Relationship Id='t' Type='x/sharedStrings' Target='/xl/texts.xml'/>"
             "<Relationship Id='y' Type='x/styles' Target='styles.xml'/></Relationships>"},
            {"xl/texts.xml", "<sst>" + parts.strings + "</sst>"},
            {"xl/styles.xml", "<styleSheet>" + parts.styles + "</styleSheet>"},
            {"tables/t.xml", parts.beforeSheet + "<worksheet><sheetData>" + parts.rows +
                                 "</sheetData></worksheet>"}};
}

/// The sheet that a package of these parts holds.
inline std::shared_ptr<const Sheet> sheetOf(const Parts &parts)
{
    const QTemporaryDir folder;
    writeZip(folder.filePath(u"parts.zip"_s), package(parts));
    return readSheet(folder.filePath(u"parts.zip"_s), u"SATIŞ LİSTESİ"_s);
}

} // namespace kervan
