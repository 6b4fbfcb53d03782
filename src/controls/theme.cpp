#include "controls/theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

struct Colours
{
    QColor window, text, base, alternate, button, highlight, highlightedText, line, faint, accent;
};

constexpr Colours light{.window = {0xf4, 0xf5, 0xf7},
                        .text = {0x23, 0x2a, 0x31},
                        .base = {0xff, 0xff, 0xff},
                        .alternate = {0xef, 0xf3, 0xf5},
                        .button = {0xfb, 0xfc, 0xfd},
                        .highlight = {0x2f, 0x6f, 0x7e},
                        .highlightedText = {0xff, 0xff, 0xff},
                        .line = {0xd3, 0xd9, 0xde},
                        .faint = {0x76, 0x82, 0x8c},
                        .accent = {0x2f, 0x6f, 0x7e}};

constexpr Colours dark{.window = {0x2b, 0x2e, 0x33},
                       .text = {0xe3, 0xe6, 0xe9},
                       .base = {0x23, 0x26, 0x2a},
                       .alternate = {0x2d, 0x31, 0x36},
                       .button = {0x37, 0x3b, 0x41},
                       .highlight = {0x3f, 0x87, 0x97},
                       .highlightedText = {0xff, 0xff, 0xff},
                       .line = {0x47, 0x4c, 0x53},
                       .faint = {0x97, 0xa1, 0xa9},
                       .accent = {0x7f, 0xbc, 0xc9}};

QPalette paletteOf(const Colours &c)
{
    QPalette palette;
    palette.setColor(QPalette::Window, c.window);
    palette.setColor(QPalette::WindowText, c.text);
    palette.setColor(QPalette::Base, c.base);
    palette.setColor(QPalette::AlternateBase, c.alternate);
    palette.setColor(QPalette::Text, c.text);
    palette.setColor(QPalette::Button, c.button);
    palette.setColor(QPalette::ButtonText, c.text);
    palette.setColor(QPalette::ToolTipBase, c.base);
    palette.setColor(QPalette::ToolTipText, c.text);
    palette.setColor(QPalette::PlaceholderText, c.faint);
    palette.setColor(QPalette::Highlight, c.highlight);
    palette.setColor(QPalette::HighlightedText, c.highlightedText);
    palette.setColor(QPalette::Link, c.accent);
    palette.setColor(QPalette::Mid, c.line);
    palette.setColor(QPalette::Midlight, c.line);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, c.faint);
    return palette;
}

QString styleOf(const Colours &c)
{
    return u"QGroupBox { font-weight: 600; border: 1px solid %1; border-radius: 6px;"
           "  margin-top: 0.8em; padding-top: 0.35em; }"
           "QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 4px; color: %2; }"
           "QTableView { border: none; gridline-color: %1; }"
           "QHeaderView::section { background: %3; border: none; border-right: 1px solid %1;"
           "  border-bottom: 1px solid %1; padding: 4px 6px; }"
           "#bar1 { background: %4; border: 1px solid %1; border-radius: 6px; }"
           "#bar1 QLabel { color: %2; font-weight: 600; }"
           "QCheckBox::indicator, QTableView::indicator { width: 13px; height: 13px;"
           "  border: 1px solid %5; border-radius: 3px; background: %6; }"
           "QCheckBox::indicator:checked, QTableView::indicator:checked { background: %2;"
           "  border-color: %2; image: url(:/pictures/tick.svg); }"
           "QCheckBox::indicator:focus, QCheckBox::indicator:hover { border-color: %2; }"
           "#odmplnkod, #kdyaz { color: %2; font-weight: 600; }"
           "#bilgi { color: #c4604a; }"_s.arg(c.line.name(), c.accent.name(), c.window.name(),
                                              c.button.name(), c.faint.name(), c.base.name());
}

} // namespace

void applyTheme(QApplication &application)
{
    applyTheme(application, QApplication::palette().color(QPalette::Window).lightness() < 128);
}

void applyTheme(QApplication &application, bool isDark)
{
    const Colours &colours = isDark ? dark : light;
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(paletteOf(colours));
    application.setStyleSheet(styleOf(colours));
}

QColor tint(const QPalette &palette)
{
    constexpr int share = 20; // of a hundred
    const QColor base = palette.color(QPalette::Base);
    const QColor accent = palette.color(QPalette::Highlight);
    const auto mixed = [](int below, int above) {
        return (below * (100 - share) + above * share) / 100;
    };
    return {mixed(base.red(), accent.red()), mixed(base.green(), accent.green()),
            mixed(base.blue(), accent.blue())};
}

} // namespace kervan
