#pragma once

#include "base/fields.h"
#include "store/program.h"

#include <QString>

namespace kervan {

/// Whether the cards of an invoice went to Logo with the last card documents. No step of the
/// invoice transfer asks.
class CardCheck
{
public:
    explicit CardCheck(Program &program)
        : m_program(program)
    {
    }

    bool cariyok = false; ///< a cari was not found; stays until it is taken back
    bool stokyok = false; ///< the same of a stock card
    TextField durum;      ///< the status panel

    /// Looks for the code among the first 15 characters of the lines of carikontrol.kvz.
    void carikontrol(const QString &kod);
    /// Looks for the code among the first 30 characters of the lines of stokkontrol.kvz.
    void stokkontrol(const QString &kod);
    /// The same for the stock code of each line of the invoice file; tells if one is missing.
    void stokkontroloku(const QString &dosyaadi);

private:
    Program &m_program;
};

} // namespace kervan
