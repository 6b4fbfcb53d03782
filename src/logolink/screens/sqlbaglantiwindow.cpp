#include "logolink/screens/sqlbaglantiwindow.h"

#include "controls/binding.h"
#include "controls/keyedbutton.h"
#include "controls/linklabel.h"
#include "controls/transferwidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QLineEdit *lineEdit(const QString &name, TextField &field)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(name);
    edit->setMinimumWidth(240);
    bind(edit, field);
    return edit;
}

} // namespace

SqlbaglantiWindow::SqlbaglantiWindow(Program &program, const Grid *cards, Way way, QWidget *parent)
    : QDialog(parent)
    , m_sqlbaglanti(program, cards)
    , m_toUpdate(dialogButton(u"guncellemeyegec"_s, u"Cari Güncelleme »"_s, u"Ctrl+U"_s))
{
    setObjectName(u"sqlbaglanti"_s);
    setWindowTitle(u"Sql Server Bağlantı"_s);
    auto *row = new QHBoxLayout(this);
    row->setSizeConstraint(QLayout::SetFixedSize);
    m_ayarlar = settings();
    m_guncelleme = update();
    row->addWidget(m_ayarlar, 0, Qt::AlignTop);
    row->addWidget(m_guncelleme, 0, Qt::AlignTop);
    row->addWidget(m_toUpdate, 0, Qt::AlignTop);
    connect(m_toUpdate, &QAbstractButton::clicked, this,
            [this] { m_sqlbaglanti.guncellemePaneli.setChecked(true); });
    for (CheckField *panel : {&m_sqlbaglanti.guncellemePaneli, &m_sqlbaglanti.ayarPaneli})
        connect(panel, &CheckField::changed, this, &SqlbaglantiWindow::showPanels);
    m_sqlbaglanti.ayarPaneli.setChecked(true);
    m_sqlbaglanti.guncellemePaneli.setChecked(way == Way::Update);
    showPanels();
    connect(&program.busy, &Busy::changed, this, [this, &busy = program.busy] {
        m_busyNote->setText(busy.text().isEmpty() ? u" "_s : busy.text()); // keeps its line
        m_busyNote->repaint();
    });
    m_sqlbaglanti.yukle();
}

QWidget *SqlbaglantiWindow::settings()
{
    auto *panel = new QGroupBox(u"SQL Bağlantı"_s);
    panel->setObjectName(u"fr2"_s);
    auto *form = new QFormLayout;
    const auto add = [&](const QString &label, QWidget *field) {
        form->addRow(labelFor(field, label), field);
    };
    add(u"SQL SERVER"_s, lineEdit(u"Text1"_s, m_sqlbaglanti.sunucu));
    add(u"Kullanıcı Adı"_s, lineEdit(u"Text2"_s, m_sqlbaglanti.kullanici));
    auto *password = lineEdit(u"Text3"_s, m_sqlbaglanti.sifre);
    password->setStyleSheet(u"QLineEdit { lineedit-password-character: 42 }"_s); // "*"
    password->setEchoMode(QLineEdit::Password);
    add(u"Sa Şifresi"_s, password);
    auto *shown = new QCheckBox(u"Şifreyi Göster"_s);
    shown->setObjectName(u"Check1"_s);
    bind(shown, m_sqlbaglanti.sifreGoster);
    connect(&m_sqlbaglanti.sifreGoster, &CheckField::changed, password, [this, password] {
        password->setEchoMode(m_sqlbaglanti.sifreGoster.isChecked() ? QLineEdit::Normal
                                                                    : QLineEdit::Password);
    });
    form->addRow(QString(), shown);
    add(u"Database"_s, lineEdit(u"Text4"_s, m_sqlbaglanti.veritabani));
    auto *firm = new QComboBox;
    firm->setObjectName(u"c1"_s);
    firm->setEditable(true);
    firm->setCompleter(nullptr); // it would turn what is typed into an entry
    bind(firm, m_sqlbaglanti.firma);
    add(u"Firma"_s, firm);

    auto *note = valueLabel(u"bilgi"_s, u"Durum:"_s, m_sqlbaglanti.bilgi);
    note->setWordWrap(true);
    m_busyNote = new QLabel(u" "_s);
    m_busyNote->setObjectName(u"mesgul"_s);
    m_busyNote->setTextFormat(Qt::PlainText);
    m_busyNote->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *column = new QVBoxLayout(panel);
    column->addLayout(form);
    column->addWidget(note);
    column->addWidget(m_busyNote);
    column->addWidget(settingsButtons());
    return panel;
}

QWidget *SqlbaglantiWindow::settingsButtons()
{
    auto *row = new QWidget;
    auto *buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    auto *test = dialogButton(u"chameleonButton1"_s, u"SQL Bağlantı Test"_s, u"Ctrl+T"_s);
    auto *firms = dialogButton(u"chameleonButton4"_s, u"Firma Yükle"_s, u"Ctrl+L"_s, u"reread"_s);
    auto *save = dialogButton(u"chameleonButton7"_s, u"Kaydet"_s, u"Ctrl+S"_s, u"save"_s);
    // Enter presses the button that has the focus; in a field it tests the connection.
    test->setDefault(true); // "Kaydet" would close the window before a firm is chosen
    connect(test, &QAbstractButton::clicked, this, [this] { m_sqlbaglanti.sqltest(); });
    connect(firms, &QAbstractButton::clicked, this, [this] { m_sqlbaglanti.firmayuklesec(); });
    connect(save, &QAbstractButton::clicked, this, [this] {
        if (!m_sqlbaglanti.kaydet())
            return;
        Q_EMIT saved();
        accept();
    });
    buttons->addWidget(test);
    buttons->addWidget(firms);
    buttons->addStretch();
    buttons->addWidget(save);
    return row;
}

QWidget *SqlbaglantiWindow::update()
{
    auto *panel = new QGroupBox(u"Cari Güncelleme"_s);
    panel->setObjectName(u"fr1"_s);
    auto *link = new LinkLabel(u"Label6"_s, m_sqlbaglanti.durum, LinkLabel::Look::Banner);
    auto *progress = new QProgressBar;
    progress->setObjectName(u"p1"_s);
    progress->setAccessibleName(u"İlerleme"_s);
    QSizePolicy keepsItsPlace = progress->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    progress->setSizePolicy(keepsItsPlace);

    auto *start = dialogButton(u"chameleonButton2"_s, u"Güncellemeyi Başlat"_s, u"Ctrl+Shift+G"_s);
    start->setEnabled(false);
    connect(&m_sqlbaglanti.baslanabilir, &CheckField::changed, start, [this, start] {
        const bool can = m_sqlbaglanti.baslanabilir.isChecked();
        start->setEnabled(can);
        start->setProperty("writes", can); // into Logo itself: it does not look like the others
        start->style()->polish(start);
    });
    connect(start, &QAbstractButton::clicked, this, [this] { m_sqlbaglanti.guncellemebaslat(); });
    auto *settings = dialogButton(u"chameleonButton3"_s, u"SQL Ayarları"_s, u"Ctrl+Y"_s);
    connect(settings, &QAbstractButton::clicked, this, [this] { m_sqlbaglanti.sqlayarlari(); });
    auto *close = dialogButton(u"chameleonButton8"_s, u"Kapat"_s, u"Ctrl+W"_s, u"close"_s);
    connect(close, &QAbstractButton::clicked, this, &QDialog::reject);

    auto *column = new QVBoxLayout(panel);
    column->addWidget(link);
    column->addWidget(progress);
    for (QPushButton *each : {start, settings, close}) {
        each->setMinimumWidth(220);
        column->addWidget(each);
    }
    bind(progress, m_sqlbaglanti.ilerleme);
    return panel;
}

void SqlbaglantiWindow::showPanels()
{
    m_guncelleme->setVisible(m_sqlbaglanti.guncellemePaneli.isChecked());
    m_ayarlar->setVisible(m_sqlbaglanti.ayarPaneli.isChecked());
    m_toUpdate->setVisible(!m_sqlbaglanti.guncellemePaneli.isChecked());
}

} // namespace kervan
