#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/notes.h"
#include "check/readreport.h"
#include "logoxml/spelling.h"
#include "logoxml/template.h"
#include "store/program.h"

#include <functional>
#include <optional>

namespace kervan {

/// The cari card transfer: a text export of current accounts into the list, and the list into one
/// document that inserts or updates their cards.
class Cr
{
public:
    /// Columns of the list that a procedure uses.
    enum Column { CariKodu, Unvani, DataReferans };

    explicit Cr(Program &program);

    Grid l1;
    TextField kartSayisi; ///< panel 2 of the status bar
    Notes bilgi;          ///< what the last read or write has to tell without a box
    ReadReport okuma;     ///< what the last read left out
    ProgressField ilerleme;
    XmlChoice okunurBicim; ///< values are written as XML asks

    // What the user does.
    void dosyaac();
    void dosyaac(const QString &path); ///< the same with a file that is picked already
    void xmlkaydet();
    void guncellemexmlkaydet();
    /// Whether there are cards to update titles with; warns if not.
    bool guncellemekontrol();

    // Procedures.
    void caridosyasikoku();
    /// Writes the document that inserts the cards, and their codes into carikontrol.kvz. A step
    /// that fails is passed over.
    void kaydet(const QString &dosya);
    /// Writes the document that updates the cards; the first failure ends it without a word.
    void kaydetguncelle(const QString &dosya);
    /// The data reference that cariref.kvz keeps for the cari, a new one the first time. A counter
    /// that is no number is a Failure.
    QString datarefyap(const QString &carino);
    /// The same for many, in their order, as if they were asked for one by one; the file is read
    /// and written once.
    QStringList datarefyap(const QStringList &carinolar);

    /// The cards as kaydet() fills them.
    Filling kartlar() const;
    const Program &program() const { return m_program; }

private:
    std::optional<QString> hedefsor();
    bool isFilled(const QString &warning);
    Filling filling(const QString &kart, std::function<QString(int row)> dataref) const;
    void write(const QString &dosya, const Filling &cards);

    Program &m_program;
    QString m_dosyayolu;
};

} // namespace kervan
