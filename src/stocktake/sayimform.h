#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/readreport.h"
#include "logolink/screenlink.h"
#include "logoxml/spelling.h"
#include "logoxml/template.h"
#include "store/program.h"

#include <QString>
#include <QStringList>

namespace kervan {

/// The stocktake transfer: the file of a barcode terminal, resolved by Logo to stock and unit
/// codes, into one material slip.
class Sayimform
{
public:
    /// Columns of the list.
    enum Column { Sirano, Barkod, StokKodu, Miktar, Birim };

    explicit Sayimform(Program &program);

    /// What the opening of the screen does.
    void load() { link.sqlyukle(); }

    Grid l1;
    TextField fisno{QStringLiteral("SYM000001")}; ///< slip number
    TextField sayimSayisi;                        ///< panel 2 of the status bar
    Notes bilgi;      ///< what the last read or write has to tell without a box
    ReadReport okuma; ///< what the last read left out
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks
    ScreenLink link;

    // What the user does.
    void dosyaac();
    void dosyaac(const QString &path); ///< the same with a file that is picked already
    void xmlkaydet();

    // Procedures.
    /// Reads the file into the list. A failed look-up ends the walk with a box, and empties it.
    void sayimdosyasikoku();
    /// Writes the slip of the rows that Logo knows. A step that fails is passed over.
    void kaydet(const QString &dosya);

    /// The head of the slip and its lines, as kaydet() fills them; the head has one row.
    Filling bas() const;
    Filling satirlar() const;
    const Program &program() const { return m_program; }

private:
    void takeLine(QStringView line);
    QStringList stokkodbul(const QString &barkod);
    QByteArray head() const;

    Program &m_program;
    QString m_dosyayolu;
};

} // namespace kervan
