#pragma once

#include "slips/slipscreen.h"
#include "support/cells.h"
#include "support/documentcase.h"
#include "support/workbooks.h"

#include <QFileInfo>

namespace kervan {

inline const SlipForm &slipForm(const QString &screen)
{
    for (const auto form : {&cafis, &cafis2, &cafis3, &carifisduzey}) {
        if (form().screen == screen)
            return form();
    }
    qFatal("no screen %s", qPrintable(screen));
}

/// A sheet of three movements of two cash codes, as `cafis` reads it.
inline QString movements()
{
    return u"T|||K|||Ü|||||TARİH\n"
           "#10|||K1||C1|BİR|||||@2021-03-15\n"
           "#20|||K2||C2|İKİ|||||1.4.2021\n"
           "#30|||K1||C3|ÜÇ|||||1.5.2021"_s;
}

/// Presses a command by its control's name.
inline void press(SlipScreen &screen, const QString &control)
{
    for (const SlipCommand &command : screen.form().commands) {
        if (command.name == control)
            return screen.run(command);
    }
    QFAIL(qPrintable(u"no command "_s + control));
}

/// One slip screen over a program folder of its own.
struct SlipDesk
{
    TestProgram t;
    SlipScreen s;

    explicit SlipDesk(const SlipForm &form)
        : s(t.program, form)
    {
    }
    void press(const QString &control) { kervan::press(s, control); }
    /// Picks the file with a command that opens workbooks.
    void read(const QString &path, const QString &control = u"buton1"_s)
    {
        t.dialogs.answers = {path};
        press(control);
    }
    /// Lays down a text export and reads it.
    void readText(const QByteArray &source)
    {
        writeBytes(t.path(u"a.txt"_s), source);
        t.dialogs.answers = {t.path(u"a.txt"_s)};
        press(u"chameleonButton5"_s);
    }
    /// Writes a workbook for the screen's sheet and reads it.
    void readBook(const QString &name, const QString &lines, const QString &control = u"buton1"_s)
    {
        writeWorkbook(t.path(name), s.sayfaAdi.text(), bookRows(lines));
        read(t.path(name), control);
    }
    /// Ticks all rows and saves; the document.
    QByteArray save(const QString &control)
    {
        s.l1.setAllTicked(true);
        s.l2.setAllTicked(true);
        const QString target = t.path(control + u".xml"_s);
        t.dialogs.answers = {target};
        press(control);
        return QFileInfo::exists(target) ? readBytes(target) : QByteArray();
    }
    /// The same behind the box of success.
    QByteArray saved(const QString &control)
    {
        t.boxes.expectDone();
        return save(control);
    }
    QByteArray bytes(const QString &name) const { return readBytes(t.path(name)); }
};

} // namespace kervan
