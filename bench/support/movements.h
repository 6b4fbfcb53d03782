#pragma once

#include "slips/slipscreen.h"
#include "store/program.h"
#include "support/workbooks.h"

#include <functional>

namespace kervan {

/// The first slip screen over a workbook of so many cash movements, all of them ticked.
class Movements
{
public:
    Movements(Program &program, int rows, const std::function<QString(int row)> &title)
        : screen(program, cafis())
        , source(program.path(u"kaynak.xlsx"))
        , m_program(program)
    {
        writeWorkbook(source, QStringLiteral("Sayfa1"), rows + 1, [&title](int row) {
            const QString account = QStringLiteral("120.01.%1").arg(row, 6, 10, QChar(u'0'));
            return BookRow{
                0.25 + row, {},      {},         QStringLiteral("KASA%1").arg(row % 40),
                {},         account, title(row), {},
                {},         {},      {},         QStringLiteral("%1.3.2021").arg(row % 28 + 1)};
        });
        screen.load();
        read();
    }
    void read()
    {
        screen.dosyaac(screen.form().files[0], source);
        screen.l1.setAllTicked(true);
        if (screen.l1.isEmpty())
            qFatal("nothing was read");
    }
    void write(const QString &target)
    {
        writeSlips(exeldenkasanakitkaydet(),
                   {screen.l1, {QStringLiteral("100"), QStringLiteral("102")}}, m_program.clock,
                   screen.ilerleme, target);
    }

    SlipScreen screen;
    QString source;

private:
    Program &m_program;
};

} // namespace kervan
