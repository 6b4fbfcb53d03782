#include "invoices/screens/fatwindow.h"

#include "controls/binding.h"
#include "controls/gridview.h"
#include "controls/pictures.h"
#include "controls/transferwidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QToolButton>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QGroupBox *listFrame(const QString &caption, GridView *view)
{
    auto *frame = new QGroupBox(caption);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(view);
    return frame;
}

QDateEdit *picker(const QString &name, DateField &field)
{
    auto *edit = new QDateEdit;
    edit->setObjectName(name);
    edit->setCalendarPopup(true);
    edit->setDisplayFormat(u"dd.MM.yyyy"_s);
    edit->setKeyboardTracking(false);
    edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(u"00.00.0000"_s) + 44);
    bind(edit, field);
    return edit;
}

QCheckBox *check(const QString &name, const QString &caption, CheckField &field)
{
    auto *box = new QCheckBox(caption);
    box->setObjectName(name);
    bind(box, field);
    return box;
}

} // namespace

FatWindow::FatWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_fat(program)
    , m_strip(new TitleStrip)
{
    setObjectName(u"fat"_s);
    setWindowTitle(u"Fatura Transferi"_s);
    connect(new FileDrop(this), &FileDrop::dropped, this,
            [this](const QString &path) { m_fat.dosyaac(path); });
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 4);
    column->setSpacing(6);
    column->addWidget(m_strip);
    column->addWidget(commands());
    column->addWidget(choices());
    column->addWidget(filters());
    auto *lists = new QSplitter(Qt::Vertical);
    lists->addWidget(invoices());
    lists->addWidget(lines());
    lists->setStretchFactor(0, 3);
    lists->setStretchFactor(1, 2);
    lists->setChildrenCollapsible(false);
    column->addWidget(lists, 1);
    column->addWidget(
        transferStatusBar(u"Fatura Sayısı:"_s, m_fat.liste.satirSayisi, m_fat.bilgi, m_fat.pr1));

    bind(m_strip->caption(), m_fat.baslik);
    m_strip->addNote(valueLabel(u"Label9"_s, m_fat.link.Label9));
    letClose(this, m_strip);
    connectList();
    m_fat.load();
    findChild<QPushButton *>(u"chameleonButton5"_s)->setFocus();
}

QPushButton *FatWindow::command(const QString &name, const QString &caption,
                                const QString &pictureName, const QString &keys,
                                void (Fat::*action)())
{
    auto *button = commandButton(this, name, caption, pictureName, keys);
    if (action)
        connect(button, &QAbstractButton::clicked, this, [this, action] { (m_fat.*action)(); });
    return button;
}

QWidget *FatWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(command(u"chameleonButton5"_s, u"Fatura Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s,
                           &Fat::dosyaac));
    row->addWidget(
        command(u"chameleonButton2"_s, u"Otomatik Aç"_s, u"reread"_s, u"F5"_s, &Fat::otomatikac));
    row->addSpacing(12);
    row->addWidget(command(u"chameleonButton1"_s, u"Logoya Satış Faturalarını Aktar"_s, u"save"_s,
                           u"Ctrl+S"_s, &Fat::logoyaaktar));
    row->addWidget(command(u"chameleonButton3"_s, u"Logo Xml Otomatik Kaydet"_s, u"autosave"_s,
                           u"Ctrl+Shift+S"_s, &Fat::otomatikkaydet));
    row->addStretch();
    auto *menuButton =
        command(u"lvButtons_H2"_s, u"Fatura Liste Seçim"_s, u"listmenu"_s, u"Ctrl+L"_s, nullptr);
    connect(menuButton, &QAbstractButton::clicked, this, [this, menuButton] {
        Q_EMIT listMenuWanted(menuButton->mapToGlobal(QPoint(0, menuButton->height())));
    });
    row->addWidget(menuButton);
    auto *remove = command(u"chameleonButton6"_s, u"Seçilen Faturaları Sil"_s, u"remove"_s,
                           u"Ctrl+Del"_s, nullptr);
    connect(remove, &QAbstractButton::clicked, this, [this] { m_fat.liste.secilenlerisil(); });
    row->addWidget(remove);
    return bar;
}

QComboBox *FatWindow::choice(const QString &name, ChoiceField &field, void (Fat::*action)(),
                             bool editable)
{
    auto *box = new QComboBox;
    box->setObjectName(name);
    box->setEditable(editable);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(14);
    bind(box, field);
    if (action)
        connect(box, &QComboBox::activated, this, [this, action] { (m_fat.*action)(); });
    return box;
}

QWidget *FatWindow::choices()
{
    auto *panel = new QWidget;
    auto *grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);
    const auto put = [grid](int row, int column, const QString &label, QWidget *field) {
        grid->addWidget(labelFor(field, label), row, column);
        grid->addWidget(field, row, column + 1);
        grid->setColumnStretch(column + 1, 1);
    };
    put(0, 0, u"Firma Seçimi:"_s, choice(u"c3"_s, m_fat.c3, &Fat::c3sec));
    put(0, 2, u"Kdv Oranı:"_s, choice(u"c1"_s, m_fat.c1, &Fat::c1sec));
    // What a user types is all that this list ever holds.
    put(0, 4, u"Birim:"_s, choice(u"c2"_s, m_fat.c2, &Fat::c2sec, true));
    auto *kind = choice(u"fatbilgi"_s, m_fat.fatbilgi, &Fat::yenidenoku);
    kind->setAccessibleName(u"Fatura türü"_s);
    kind->setToolTip(u"Fatura türü"_s);
    grid->addWidget(kind, 0, 6, 1, 2);
    put(1, 0, u"Ödeme Plan Kodu:"_s, choice(u"c5"_s, m_fat.c5, &Fat::c5sec));
    auto *plan = valueLabel(u"odmplnkod"_s, m_fat.odmplnkod);
    plan->setToolTip(u"Belgeye yazılan ödeme planı"_s);
    grid->addWidget(plan, 1, 2, 1, 2);
    put(1, 4, u"Fatura Özel Kodu:"_s, choice(u"c4"_s, m_fat.c4));
    auto *staff = choice(u"pers"_s, m_fat.pers, &Fat::yenidenoku);
    staff->setAccessibleName(u"Personel"_s);
    staff->setToolTip(u"Personel listesi: seçim dosyayı yeniden okutur, listeyi süzmez"_s);
    grid->addWidget(staff, 1, 6);
    auto *vat = new QWidget;
    auto *vatRow = new QHBoxLayout(vat);
    vatRow->setContentsMargins(0, 0, 0, 0);
    auto *rate = valueLabel(u"kdyaz"_s, m_fat.kdyaz);
    vatRow->addWidget(labelFor(rate, u"Gen.Kdv:"_s));
    vatRow->addWidget(rate, 1);
    grid->addWidget(vat, 1, 7);
    return panel;
}

QWidget *FatWindow::filters()
{
    auto *panel = new QWidget;
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    InvoiceList &list = m_fat.liste;
    auto *all = check(u"Check2"_s, u"Tümünü Seç"_s, list.Check2);
    connect(all, &QCheckBox::toggled, this, [this] { m_fat.liste.check2degisti(); });
    row->addWidget(all);
    row->addSpacing(16);
    auto *search = new QLineEdit;
    search->setObjectName(u"crara"_s);
    search->addAction(picture(u"search"_s), QLineEdit::LeadingPosition);
    search->setPlaceholderText(u"Enter ile ara"_s);
    search->setMaximumWidth(260);
    bind(search, list.crara);
    connect(search, &QLineEdit::returnPressed, this,
            [this] { m_l1->markRows(m_fat.liste.unvanara()); });
    row->addWidget(labelFor(search, u"Cari Unvanı:"_s));
    row->addWidget(search);
    row->addStretch();
    auto *range = check(u"Check1"_s, u"Tarih Aralığı Belirle"_s, list.Check1);
    connect(range, &QCheckBox::clicked, this, [this] { m_fat.check1sec(); });
    row->addWidget(range);
    const auto date = [&](const QString &name, const QString &label, DateField &field) {
        auto *edit = picker(name, field);
        connect(edit, &QDateEdit::dateChanged, this, [this] { m_fat.tarihdegisti(); });
        row->addWidget(labelFor(edit, label));
        row->addWidget(edit);
    };
    date(u"d1"_s, u"İlk Tarih"_s, list.d1);
    date(u"d2"_s, u"Son Tarih"_s, list.d2);
    return panel;
}

QWidget *FatWindow::invoices()
{
    m_l1 = new GridView(m_fat.liste.l1, u"l1"_s);
    m_l1->setAccessibleName(u"Fatura Listesi"_s);
    m_l1->setEmptyText(u"\"Fatura Dosyası Aç\" ile bir .bif dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s);
    connect(&m_fat.baslik, &TextField::changed, m_l1,
            [this] { m_l1->setEmptyText(u"Listede gösterilecek fatura yok."_s); });
    return listFrame(u"Fatura Listesi"_s, m_l1);
}

QWidget *FatWindow::lines()
{
    auto *view = new GridView(m_fat.l2, u"l2"_s);
    view->setAccessibleName(u"Fatura Kalemleri"_s);
    view->setEmptyText(u"Kalemlerini görmek için listeden bir faturaya tıklayın."_s);
    return listFrame(u"Fatura Kalemleri"_s, view);
}

void FatWindow::connectList()
{
    // A row is chosen by a click or by moving to it; a re-read list has no row chosen.
    connect(m_l1, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        // Its tick box alone does not choose a row.
        if (!m_l1->selectionModel()->isSelected(index))
            m_l1->setCurrentIndex(index);
        m_fat.satirsec(index.row());
    });
    connect(m_l1, &GridView::movedTo, this, [this](int row) { m_fat.satirsec(row); });
    auto *remove = new QShortcut(Qt::Key_Delete, m_l1);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, [this] { m_fat.liste.secilenlerisil(); });
}

} // namespace kervan
