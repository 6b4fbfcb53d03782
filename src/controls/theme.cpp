#include "controls/theme.h"

#include "controls/pictures.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <QTimer>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

struct Colours
{
    QColor window, text, base, alternate, button, highlight, highlightedText, line, faint, accent,
        handle;
    QColor fault, faultBase; // what failed or writes into Logo, and the strip that tells it
    QColor good;             // what is done or connected
};

constexpr Colours light{.window = {0xf4, 0xf5, 0xf7},
                        .text = {0x23, 0x2a, 0x31},
                        .base = {0xff, 0xff, 0xff},
                        .alternate = {0xef, 0xf3, 0xf5},
                        .button = {0xfb, 0xfc, 0xfd},
                        .highlight = {0x2f, 0x6f, 0x7e},
                        .highlightedText = {0xff, 0xff, 0xff},
                        .line = {0xd3, 0xd9, 0xde},
                        .faint = {0x60, 0x6b, 0x75},
                        .accent = {0x2f, 0x6f, 0x7e},
                        .handle = {0xa9, 0xb4, 0xbc},
                        .fault = {0xa1, 0x2d, 0x1c},
                        .faultBase = {0xfd, 0xf1, 0xee},
                        .good = {0x1d, 0x73, 0x3c}};

constexpr Colours dark{.window = {0x2b, 0x2e, 0x33},
                       .text = {0xe3, 0xe6, 0xe9},
                       .base = {0x1c, 0x1f, 0x22},
                       .alternate = {0x26, 0x2a, 0x2e},
                       .button = {0x37, 0x3b, 0x41},
                       .highlight = {0x39, 0x7d, 0x8c},
                       .highlightedText = {0xff, 0xff, 0xff},
                       .line = {0x47, 0x4c, 0x53},
                       .faint = {0x97, 0xa1, 0xa9},
                       .accent = {0x7f, 0xbc, 0xc9},
                       .handle = {0x6b, 0x73, 0x7b},
                       .fault = {0xf5, 0xa8, 0x98},
                       .faultBase = {0x40, 0x2b, 0x28},
                       .good = {0x82, 0xd2, 0x9b}};

bool isDark(const QColor &colour)
{
    return colour.lightness() < 128;
}

// More than the breath of blue or brown that everyday greys have.
bool isTinted(const QColor &colour)
{
    constexpr int breath = 40;
    const auto [least, most] = std::minmax({colour.red(), colour.green(), colour.blue()});
    return most - least > breath;
}

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
    const QString lists =
        u"QGroupBox { font-weight: 600; border: 1px solid %1; border-radius: 6px;"
        "  margin-top: 0.8em; padding-top: 0.35em; }"
        "QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 4px; color: %2; }"
        "QTableView { border: none; gridline-color: %1; }"
        "QHeaderView::section, QTableCornerButton::section { background: %3; border: none; "
        "border-right: 1px solid %1;"
        "  border-bottom: 1px solid %1; padding: 3px 6px; }"
        "#bar1 { background: %4; border: 1px solid %1; border-radius: 6px; }"
        "#bar1 QLabel { color: %2; font-weight: 600; }"
        "#odmplnkod, #kdyaz { color: %2; font-weight: 600; }"_s.arg(
            c.line.name(), c.accent.name(), c.window.name(), c.button.name());
    const QString boxes =
        u"QCheckBox::indicator, QTableView::indicator { width: 13px; height: 13px;"
        "  border: 1px solid %1; border-radius: 3px; background: %2; }"
        "QCheckBox::indicator:checked, QTableView::indicator:checked { background: %3;"
        "  border-color: %3; image: url(%4); }"
        "QCheckBox::indicator:focus, QCheckBox::indicator:hover { border-color: %3; }"_s.arg(
            c.faint.name(), c.base.name(), c.highlight.name(),
            pictureFile(isDark(c.highlightedText) ? u"tickdark"_s : u"tick"_s, 13));
    // The handle stands out from its ground, and stays whole at scales like 150 %.
    const QString scrolling =
        u"QScrollBar { background: %1; border: none; margin: 0; }"
        "QScrollBar:vertical { width: 12px; } QScrollBar:horizontal { height: 12px; }"
        "QScrollBar::handle { background: %2; border-radius: 4px; margin: 2px; }"
        "QScrollBar::handle:hover { background: %3; }"
        "QScrollBar::handle:vertical { min-height: 24px; }"
        "QScrollBar::handle:horizontal { min-width: 24px; }"
        "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
        "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"_s.arg(
            c.window.name(), c.handle.name(), c.accent.name());
    // What writes into Logo itself does not look like what makes a file.
    const QString warning =
        u"#bilgi, #tutmayan { color: %1; }"
        "#tutmayan { font-weight: 600; }"
        "#belge { color: %5; }"
        "#arizalar { background: %4; border: 1px solid %1; border-radius: 6px; }"
        "#yazilanlar, #bekleyis { background: %2; border: 1px solid %3; border-radius: 6px; }"
        "QPushButton[writes=\"true\"] { color: %1; background: %2; border: 2px solid %1;"
        "  border-radius: 4px; padding: 2px 8px; font-weight: 600; }"
        "QPushButton[writes=\"true\"]:pressed, QPushButton[writes=\"true\"]:focus"
        "  { border-color: %3; }"_s.arg(c.fault.name(), c.button.name(), c.accent.name(),
                                        c.faultBase.name(), c.good.name());
    return lists + boxes + scrolling + warning;
}

// The style derives its frames from the ground, and from a black or white one they don't stand out.
QString framesOf(const QPalette &palette)
{
    return u"QLineEdit, QPlainTextEdit, QComboBox, QPushButton, QToolButton, QMenu"
           "  { border: 1px solid %1; border-radius: 3px; }"
           "QLineEdit, QComboBox { padding: 1px 3px; } QPushButton { padding: 2px 6px; }"
           "QToolButton { padding: 2px; }"
           "QLineEdit:focus, QComboBox:focus { border: 2px solid %2; padding: 0 2px; }"
           "QPushButton:focus { border: 2px solid %2; padding: 1px 5px; }"
           "QToolButton:focus { border: 2px solid %2; padding: 1px; }"
           "QLineEdit:disabled, QComboBox:disabled, QPushButton:disabled, QToolButton:disabled"
           "  { border-color: %3; }"
           "QPushButton:pressed, QToolButton:pressed, QToolButton:checked"
           "  { background: %2; color: %4; }"
           "QComboBox QLineEdit, QTableView QLineEdit, QLineEdit QToolButton, #bar1 QToolButton"
           "  { border: none; padding: 0; }"_s.arg(
               palette.color(QPalette::WindowText).name(),
               palette.color(QPalette::Highlight).name(),
               palette.color(QPalette::Disabled, QPalette::ButtonText).name(),
               palette.color(QPalette::HighlightedText).name());
}

void dress(QApplication &application, const QPalette &palette, const QString &style)
{
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(palette);
    application.setStyleSheet(style);
}

// A desktop of high contrast draws with its own few colours, and so does the program then.
Colours coloursOf(const QPalette &palette)
{
    const QColor text = palette.color(QPalette::WindowText);
    return {.window = palette.color(QPalette::Window),
            .text = text,
            .base = palette.color(QPalette::Base),
            .alternate = palette.color(QPalette::AlternateBase),
            .button = palette.color(QPalette::Button),
            .highlight = palette.color(QPalette::Highlight),
            .highlightedText = palette.color(QPalette::HighlightedText),
            .line = text,
            .faint = text,
            .accent = text,
            .handle = text,
            .fault = text,
            .faultBase = palette.color(QPalette::Base),
            .good = text};
}

// What such a desktop leaves to be derived would be too faint.
QPalette withLines(QPalette palette)
{
    const QColor text = palette.color(QPalette::WindowText);
    for (const QPalette::ColorRole role :
         {QPalette::Mid, QPalette::Midlight, QPalette::PlaceholderText})
        palette.setColor(role, text);
    return palette;
}

// Dresses the program again when the desktop changes its colours.
class ThemeFollower : public QObject
{
public:
    explicit ThemeFollower(QApplication &application)
        : QObject(&application)
        , m_application(application)
    {
        application.installEventFilter(this);
        m_soon.setSingleShot(true);
        connect(&m_soon, &QTimer::timeout, this, [this] {
            QApplication::setPalette(QPalette()); // the desktop's again
            applyTheme(m_application, QApplication::palette());
            m_isDue = false;
        });
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::ThemeChange && !m_isDue) {
            m_isDue = true; // each window is told
            m_soon.start(0);
        }
        return false;
    }

private:
    QApplication &m_application;
    QTimer m_soon;
    bool m_isDue = false;
};

} // namespace

void applyTheme(QApplication &application)
{
    applyTheme(application, QApplication::palette());
    new ThemeFollower(application);
}

void applyTheme(QApplication &application, const QPalette &desktop)
{
    if (isHighContrast(desktop))
        dress(application, withLines(desktop), framesOf(desktop) + styleOf(coloursOf(desktop)));
    else
        applyTheme(application, isDark(desktop));
}

bool isDark(const QPalette &palette)
{
    return isDark(palette.color(QPalette::Window));
}

void applyTheme(QApplication &application, bool onDark)
{
    const Colours &colours = onDark ? dark : light;
    dress(application, paletteOf(colours), styleOf(colours));
}

bool isHighContrast(const QPalette &palette)
{
    const QColor ground = palette.color(QPalette::Window);
    const bool isPlain = ground == QColor(Qt::black) || ground == QColor(Qt::white);
    const bool isFlat =
        ground == palette.color(QPalette::Base) && ground == palette.color(QPalette::Button);
    return isPlain || isFlat || isTinted(ground) || isTinted(palette.color(QPalette::WindowText));
}

QColor faultText(const QPalette &palette)
{
    if (isHighContrast(palette))
        return palette.color(QPalette::WindowText);
    return (isDark(palette) ? dark : light).fault;
}

QColor goodText(const QPalette &palette)
{
    if (isHighContrast(palette))
        return palette.color(QPalette::WindowText);
    return (isDark(palette) ? dark : light).good;
}

QColor tint(const QPalette &palette)
{
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Highlight), 20);
}

QColor mixed(const QColor &below, const QColor &above, int share)
{
    const auto part = [share](int under, int over) {
        return (under * (100 - share) + over * share) / 100;
    };
    return {part(below.red(), above.red()), part(below.green(), above.green()),
            part(below.blue(), above.blue())};
}

} // namespace kervan
