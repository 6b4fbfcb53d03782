#include "slips/screens/slipwindow.h"

#include "check/screens/checkedlist.h"
#include "check/screens/listmemory.h"
#include "controls/binding.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/notestrip.h"
#include "controls/panes.h"
#include "controls/sheetlist.h"
#include "controls/transferwidgets.h"
#include "slips/slipchecks.h"
#include "store/sidefiles.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView cashListCaption = u"CH Kasa Nakit Haraket Listesi";

DocumentFamily familyOf(SlipKind kind)
{
    switch (kind) {
    case SlipKind::Note:
    case SlipKind::Cheque:
        return DocumentFamily::Rolls;
    case SlipKind::Cash:
        return DocumentFamily::CashSlips;
    case SlipKind::Bank:
        return DocumentFamily::BankSlips;
    case SlipKind::Card:
        return DocumentFamily::CardSlips;
    case SlipKind::None:
        break;
    }
    return DocumentFamily::Unknown;
}

WrittenRows writtenSlips(const SlipScreen &screen)
{
    const SlipDocument &document = *screen.sonBelge();
    const ListShape shape = document.ofBankList ? bankListShapeOf(screen) : shapeOf(screen);
    const Grid &rows = document.ofBankList ? screen.l2 : screen.l1;
    if (document.takesTicked())
        return writtenRows(rows, familyOf(document.kind), true,
                           screen.metinden() ? -1 : shape.number, shape.amounts.first());
    WrittenRows written; // the rows of a class
    written.family = familyOf(document.kind);
    for (int row = 0; row < rows.rows(); ++row)
        written.count += document.takes(rows, row);
    return written;
}

} // namespace

SlipWindow::SlipWindow(Program &program, const SlipForm &form, QWidget *parent)
    : QWidget(parent)
    , m_screen(program, form)
    , m_checks(checksOf(m_screen, [this] { return m_sharesCounter && m_sharesCounter(); }))
{
    setObjectName(form.screen);
    setWindowTitle(form.caption);
    auto *memory = new ListMemory(this, {u"Text1"_s, u"bankahesapno1"_s});
    memory->setFile([this] { return m_screen.sonDosya() ? m_screen.dosyayolu() : QString(); },
                    [this] {
                        return static_cast<int>(m_screen.sonDosya() -
                                                m_screen.form().files.constData());
                    });
    memory->setRead([this](const QString &path, int way) {
        readIntoList(this, [&] { m_screen.dosyaac(m_screen.form().files[way], path); });
    });
    auto *strip = titleStrip({});
    bind(strip->caption(), m_screen.baslik);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(screenMargins);
    column->setSpacing(screenSpacing);
    column->addWidget(strip);
    column->addWidget(new NoteStrip(m_screen.bilgi));
    column->addWidget(scroller({head(), lists(program)}), 1);
    column->addWidget(transferStatusBar(u"Cari Haraket Sayısı:"_s, m_screen.hareketSayisi,
                                        m_screen.bilgi, m_screen.ilerleme));
    addHidden();

    letClose(this, strip);
    leadThroughPanes(this);
    addListTools(this);
    connect(new FileDrop(this), &FileDrop::dropped, this, [this](const QString &path) {
        readIntoList(this, [&] { m_screen.birakilandosya(path); });
    });
    m_screen.load();
    findChild<QPushButton *>(u"buton1"_s)->setFocus();
}

QWidget *SlipWindow::head()
{
    auto *frame = new QFrame;
    frame->setObjectName(u"f2"_s);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(screenSpacing);
    column->addWidget(commands());
    column->addWidget(settings());
    return frame;
}

QWidget *SlipWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new FlowLayout(bar);
    bool opens = true; // the buttons that open stand in front of those that save
    for (const SlipCommand &command : m_screen.form().commands) {
        if (!command.shown)
            continue;
        const bool saves = std::holds_alternative<WriteDocument>(command.action);
        if (opens && saves) {
            row->addSpacing(12);
            opens = false;
        }
        auto *button = commandButton(this, command.name, command.caption,
                                     saves ? u"save"_s : u"open"_s, command.keys);
        connect(button, &QAbstractButton::clicked, this,
                [this, &command] { readIntoList(this, [&] { m_screen.run(command); }); });
        row->addWidget(button);
    }
    row->addStretch();
    return bar;
}

QWidget *SlipWindow::settings()
{
    auto *panel = new QWidget;
    auto *row = new FlowLayout(panel);
    const auto edit = [&](const QString &name, const QString &label, TextField &field) {
        auto *box = new QLineEdit;
        box->setObjectName(name);
        box->setMaximumWidth(220);
        bind(box, field);
        row->addPair(labelFor(box, label), box);
        return box;
    };
    auto *sheet = edit(u"Text1"_s, u"Exel Sayfa Adı"_s, m_screen.sayfaAdi);
    addSheetList(
        sheet, m_screen.sayfaAdi, [this] { return m_screen.dosyayolu(); }, &readSheetNames);
    connect(&m_screen.bilgi, &Notes::chosen, &m_screen.sayfaAdi, &TextField::setText);
    auto *keep = commandButton(this, u"lvButtons_H1"_s, {}, u"keep"_s, u"Ctrl+D"_s);
    keep->setToolTip(u"Sayfa adını sakla (Ctrl+D)"_s);
    keep->setAccessibleName(u"Sayfa adını sakla"_s);
    const auto showKept = [this, keep] {
        keep->setEnabled(m_screen.sayfaKaydedilir.isChecked());
    };
    connect(&m_screen.sayfaKaydedilir, &CheckField::changed, keep, showKept);
    showKept();
    connect(keep, &QAbstractButton::clicked, this, [this] { m_screen.sayfaadikaydet(); });
    row->addWidget(keep);
    row->addSpacing(16);
    edit(u"bankahesapno1"_s, u"Banka Hesap Kodu:"_s, m_screen.bankaHesapKodu);
    row->addSpacing(16);
    auto *cash = valueLabel(u"kskod"_s, u"Kasa Kodu:"_s, m_screen.kasaKodu);
    row->addPair(labelFor(cash, u"Kasa Kodu:"_s), cash);
    return panel;
}

QWidget *SlipWindow::lists(Program &program)
{
    const SlipForm &form = m_screen.form();
    GridView *l1 = movements();
    auto *cash = listFrame(u"f1"_s, cashListCaption.toString(), u"Check1"_s, m_screen.tumHareketler,
                           &SlipScreen::tumhareketlerisec, l1);
    CheckedList list{.window = this,
                     .rows = m_screen.l1,
                     .view = l1,
                     .frame = cash,
                     .memoryKey = u"slips/pane"_s,
                     .checks = *m_checks,
                     .report = m_screen.okuma,
                     .program = program,
                     .notes = m_screen.bilgi,
                     .okunurBicim = m_screen.okunurBicim,
                     .shape = [this] { return shapeOf(m_screen); },
                     .reread = [this] { m_screen.yenidenoku(); },
                     .listed =
                         [this] {
                             const SlipFile *file = m_screen.sonDosya();
                             return listedSlips(m_screen, file && file->kind == ReadKind::Card
                                                              ? DocumentFamily::CardSlips
                                                              : DocumentFamily::CashSlips);
                         },
                     .written = [this] { return writtenSlips(m_screen); },
                     .counters = {cashCounterFile.toString(), bankCounterFile.toString()}};
    if (!form.hasBankList())
        return checkedPanes(list);
    auto *view = new GridView(m_screen.l2, u"l2"_s);
    view->setAccessibleName(form.bankListCaption);
    view->setEmptyText(u"Hareketler okununca kod başına bir satır burada görünür."_s);
    list.lines = listFrame(u"f3"_s, form.bankListCaption, u"Check2"_s, m_screen.tumFisler,
                           &SlipScreen::tumfislerisec, view);
    list.linesView = view;
    list.linesTitle = u"Banka Fişleri"_s;
    list.memoryKey = u"slips/bank"_s;
    list.secondRows = &m_screen.l2;
    list.secondShape = [this] {
        return bankListShapeOf(m_screen);
    };
    list.secondListed = [this] {
        return listedSlips(m_screen, DocumentFamily::BankSlips);
    };
    return checkedPanes(list);
}

GridView *SlipWindow::movements()
{
    auto *view = new GridView(m_screen.l1, u"l1"_s);
    view->setAccessibleName(cashListCaption.toString());
    view->setEmptyText(m_screen.form().files.size() == 1
                           ? u"\"Cari Haraket Dosyası Aç\" ile bir Excel dosyası seçin ya da "
                             "dosyayı buraya sürükleyin."_s
                           : u"\"Nakit Dosyası Oku\" ya da \"Kredi Kartı Dosyası Oku\" ile bir "
                             "Excel dosyası seçin ya da dosyayı buraya sürükleyin."_s);
    connect(&m_screen.l1, &QAbstractItemModel::modelReset, view,
            [view] { view->setEmptyText(u"Listede gösterilecek hareket yok."_s); });
    return view;
}

QGroupBox *SlipWindow::listFrame(const QString &name, const QString &caption,
                                 const QString &checkName, CheckField &check,
                                 void (SlipScreen::*tickAll)(), GridView *view)
{
    auto *frame = new QGroupBox(caption);
    frame->setObjectName(name);
    auto *box = new QCheckBox(u"Tümünü Seç"_s);
    box->setObjectName(checkName);
    box->setAccessibleName(u"%1: %2"_s.arg(box->text(), caption)); // there may be two of them
    bind(box, check);
    connect(box, &QCheckBox::toggled, this, [this, tickAll] { (m_screen.*tickAll)(); });
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(4, 2, 4, 2);
    column->setSpacing(3);
    column->addWidget(box);
    column->addWidget(view);
    return frame;
}

// Defined for the screen, and never shown on it.
void SlipWindow::addHidden()
{
    for (const SlipCommand &command : m_screen.form().commands) {
        if (command.shown)
            continue;
        auto *button = new QPushButton(command.caption, this);
        button->setObjectName(command.name);
        button->hide();
        connect(button, &QAbstractButton::clicked, this,
                [this, &command] { readIntoList(this, [&] { m_screen.run(command); }); });
    }
    (new GridView(m_screen.l1eski, u"l1eski"_s, this))->hide();
    (new GridView(m_screen.ListView1, u"ListView1"_s, this))->hide();
    if (m_screen.form().usesStaff)
        (new GridView(m_screen.persl, u"persl"_s, this))->hide();
}

} // namespace kervan
