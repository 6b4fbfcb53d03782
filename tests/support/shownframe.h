#pragma once

#include "frame/mainwindow.h"
#include "support/fakes.h"

#include <QTest>

namespace kervan {

/// The frame over a program folder of its own, with Logo in reach.
struct ShownFrame
{
    TestProgram t;
    MainWindow window{t.program};

    ShownFrame() { t.reachLogo(); }
    /// In front, with the keys.
    void show()
    {
        window.show();
        [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(&window);
    }
};

} // namespace kervan
