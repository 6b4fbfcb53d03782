#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/readreport.h"
#include "logoxml/spelling.h"
#include "logoxml/template.h"
#include "store/program.h"

#include <array>
#include <optional>

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
    ReadReport okuma;     ///< what the last read left out
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

    /// The cards as kaydet() fills them.
    Filling kartlar() const;
    /// Why the special codes could not be read, if they could not.
    const std::optional<Failure> &ozkodOkunamadi() const { return m_ozkodOkunamadi; }
    const Program &program() const { return m_program; }

private:
    Program &m_program;
    QString m_dosyayolu;
    std::optional<Failure> m_ozkodOkunamadi;
};

} // namespace kervan
