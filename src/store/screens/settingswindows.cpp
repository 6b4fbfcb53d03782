#include "store/screens/settingswindows.h"

#include "controls/binding.h"
#include "controls/keyedbutton.h"
#include "controls/pictures.h"
#include "controls/transferwidgets.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QLineEdit *edit(const QString &name, const QString &label, TextField &field)
{
    auto *made = new QLineEdit;
    made->setObjectName(name);
    made->setAccessibleName(label);
    made->setMinimumWidth(320);
    bind(made, field);
    return made;
}

template<class Save>
QPushButton *saveButton(QDialog *dialog, const QString &name, Save save)
{
    auto *button = dialogButton(name, u"Kaydet"_s, u"Ctrl+S"_s, u"save"_s);
    button->setDefault(true);
    QObject::connect(button, &QAbstractButton::clicked, dialog, save);
    return button;
}

} // namespace

ValueWindow::ValueWindow(Program &program, const ValueDialog &dialog, QWidget *parent)
    : QDialog(parent)
    , m_setting(program, dialog)
{
    setObjectName(dialog.screen);
    setWindowTitle(dialog.caption);
    auto *column = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    form->addRow(dialog.label, edit(u"bankahesapno1"_s, dialog.label, m_setting.kod));
    column->addLayout(form);
    column->addWidget(saveButton(this, u"chameleonButton5"_s,
                                 [this] {
                                     m_setting.kaydet();
                                     Q_EMIT saved(m_setting.kod.text());
                                     accept();
                                 }),
                      0, Qt::AlignRight);
    m_setting.yukle();
    setFixedSize(sizeHint());
}

KdvmuWindow::KdvmuWindow(Program &program, QWidget *parent)
    : QDialog(parent)
    , m_kdvmu(program)
{
    setObjectName(u"kdvmu"_s);
    setWindowTitle(u"KVZ"_s);
    auto *frame = new QGroupBox(u"Kdv Muafiyet Yazısı"_s);
    auto *form = new QFormLayout(frame);
    form->addRow(u"Fatura Genel"_s, edit(u"Text1"_s, u"Fatura Genel"_s, m_kdvmu.genel));
    form->addRow(u"Fatura Satır"_s, edit(u"Text2"_s, u"Fatura Satır"_s, m_kdvmu.satir));
    auto *column = new QVBoxLayout(this);
    column->addWidget(frame);
    column->addWidget(saveButton(this, u"chameleonButton5"_s,
                                 [this] {
                                     m_kdvmu.kaydet();
                                     Q_EMIT saved(m_kdvmu.genel.text(), m_kdvmu.satir.text());
                                     accept();
                                 }),
                      0, Qt::AlignRight);
    m_kdvmu.yukle();
    setFixedSize(sizeHint());
}

AyrWindow::AyrWindow(Program &program, QWidget *parent)
    : QDialog(parent)
    , m_ayr(program)
{
    setObjectName(u"ayr"_s);
    setWindowTitle(u"Dosya Konumları"_s);
    auto *column = new QVBoxLayout(this);
    column->addWidget(frame(u"Text Dosya Konumu"_s, u"Text "_s, 0));
    column->addWidget(frame(u"Logo Xml Dosyaları Konumu"_s, u"Xml "_s, 3));
    auto *close = dialogButton(u"chameleonButton8"_s, u"Kapat"_s, u"Ctrl+W"_s, u"close"_s);
    close->setAutoDefault(false);
    connect(close, &QAbstractButton::clicked, this, &QDialog::reject);
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(saveButton(this, u"chameleonButton7"_s, [this] {
        m_ayr.kaydet();
        accept();
    }));
    row->addWidget(close);
    column->addLayout(row);
    m_ayr.yukle();
    setFixedSize(sizeHint().expandedTo({560, 0}));
}

QGroupBox *AyrWindow::frame(const QString &caption, const QString &kind, int first)
{
    auto *frame = new QGroupBox(caption);
    auto *grid = new QGridLayout(frame);
    for (int row = 0; row < 3; ++row) {
        const int i = first + row;
        const auto index = static_cast<std::size_t>(i);
        const Ayr::Setting &setting = Ayr::settings()[index];
        auto *browse = new QToolButton;
        browse->setObjectName(u"chameleonButton%1"_s.arg(i + 1));
        browse->setIcon(picture(u"open"_s));
        browse->setToolTip(u"Gözat (F4)"_s);
        browse->setAccessibleName(u"Gözat: "_s + kind + setting.label);
        connect(browse, &QAbstractButton::clicked, this, [this, i] { m_ayr.gozat(i); });
        QLineEdit *field = edit(setting.control, kind + setting.label, m_ayr.fields[index]);
        auto *shortcut = new QShortcut(Qt::Key_F4, field);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, browse, &QAbstractButton::click);
        grid->addWidget(labelFor(field, setting.label), row, 0);
        grid->addWidget(field, row, 1);
        grid->addWidget(browse, row, 2);
    }
    return frame;
}

} // namespace kervan
