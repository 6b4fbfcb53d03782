#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "logoxml/spelling.h"
#include "store/program.h"

#include <array>

namespace kervan {

/// The stock card transfer: a text export of materials into the list, and the list into one
/// document that inserts them as item cards.
class Stoktrf
{
public:
    enum Column { Sira, MalzemeKodu, Aciklama, Birim, BirimCarpani, Kdv };

    explicit Stoktrf(Program &program);

    /// What the opening of the screen does.
    void load();
    /// Fills the five lists from stokozkod.dbs, their choices gone; the first failure ends it
    /// quietly.
    void ozkodyukle();

    Grid l1;
    TextField brmseti; ///< stock unit set code
    std::array<ChoiceField, 5> ozelKodlar;
    TextField kartSayisi; ///< panel 2 of the status bar
    Notes bilgi;          ///< what the last read or write has to tell without a box
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks

    // What the user does.
    void dosyaac();
    void dosyaac(const QString &path); ///< the same with a file that is picked already
    void xmlkaydet();

    // Procedures.
    /// A failure ends it silently, and the rows read so far stay.
    void stokdosyasikoku();
    /// Writes the document, and the stock codes into stokkontrol.kvz. A step that fails is passed
    /// over.
    void kaydet(const QString &dosya);

private:
    Program &m_program;
    QString m_dosyayolu;
};

} // namespace kervan
