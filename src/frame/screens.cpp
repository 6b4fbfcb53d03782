#include "frame/screens.h"

#include "cards/screens/crwindow.h"
#include "cards/screens/stoktrfwindow.h"
#include "cards/screens/stwindow.h"
#include "frame/mainwindow.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/screens/fatwindow.h"
#include "logolink/screens/sqlbaglantiwindow.h"
#include "slips/screens/slipwindow.h"
#include "stocktake/screens/sayimwindow.h"
#include "stocktake/screens/urunwindow.h"
#include "store/screens/definitionwindow.h"
#include "store/screens/settingswindows.h"

#include <QMenu>

#include <algorithm>
#include <array>

namespace kervan {

namespace {

// Who is told when a definition screen is closed, and how.
using Closing = DefinitionWindow::Closing;

void tellNobody(MainWindow &, Closing) {}

void tellInvoices(MainWindow &frame, Closing)
{
    if (auto *window = frame.openScreen<FatWindow>(u"fat"))
        window->fat().yukle();
}

void tellInvoicesIfByButton(MainWindow &frame, Closing how)
{
    if (how == Closing::ByButton)
        tellInvoices(frame, how);
}

void tellStockCards(MainWindow &frame, Closing)
{
    if (auto *window = frame.openScreen<StoktrfWindow>(u"stoktrf"))
        window->stoktrf().ozkodyukle();
}

// Who is told of a value that is saved.
void tellBankCode(MainWindow &frame, const QString &code)
{
    frame.inBackground<SlipWindow>(u"cafis2")->setBankaKodu(code);
}

void tellCashCode(MainWindow &frame, const QString &code)
{
    frame.inBackground<SlipWindow>(u"cafis2")->setKasaKodu(code);
}

void tellUnitSet(MainWindow &frame, const QString &code)
{
    frame.inBackground<StoktrfWindow>(u"stoktrf")->stoktrf().brmseti.setText(code);
}

// Transfers.

// The screen asks to be closed; the subwindow around it is what closes.
template<class Window>
Window *closable(MainWindow &frame, Window *window)
{
    QObject::connect(window, &Window::closeWanted, window, [window, &frame] {
        if (frame.isAtWork())
            return;
        frame.rememberList(window);
        MainWindow::subWindowOf(window)->close();
    });
    return window;
}

template<class Window>
QWidget *transfer(MainWindow &frame, QStringView)
{
    return closable(frame, new Window(frame.program()));
}

// Whether another open screen has numbers of the cash counter in its list.
bool sharesCounter(const MainWindow &frame, const QWidget *own)
{
    if (auto *window = frame.openScreen<FatWindow>(u"fat");
        window && window != own && !window->fat().liste.l1.isEmpty())
        return true;
    for (const QStringView word : {u"cafis", u"cafis2", u"cafis3", u"carifisduzey"}) {
        auto *window = frame.openScreen<SlipWindow>(word);
        if (window && window != own && !window->screen().l1.isEmpty())
            return true;
    }
    return false;
}

// It brings up the menu of the list operations.
template<class Window>
QWidget *invoices(MainWindow &frame, QStringView)
{
    auto *window = closable(frame, new Window(frame.program()));
    if constexpr (std::is_same_v<Window, FatWindow>)
        window->setSharesCounter([&frame, window] { return sharesCounter(frame, window); });
    QObject::connect(window, &Window::listMenuWanted, &frame,
                     [&frame](const QPoint &place) { frame.listMenu()->popup(place); });
    return window;
}

template<class Window>
void load(QWidget *window)
{
    static_cast<Window *>(window)->load();
}

template<const SlipForm &form()>
QWidget *slips(MainWindow &frame, QStringView)
{
    auto *window = closable(frame, new SlipWindow(frame.program(), form()));
    window->setSharesCounter([&frame, window] { return sharesCounter(frame, window); });
    return window;
}

template<SqlbaglantiWindow::Way way>
QWidget *sqlbaglanti(MainWindow &frame, QStringView)
{
    auto *cards = frame.openScreen<CrWindow>(u"cr");
    auto *window =
        new SqlbaglantiWindow(frame.program(), cards ? &cards->cr().l1 : nullptr, way, &frame);
    QObject::connect(window, &SqlbaglantiWindow::saved, &frame, [&frame] {
        if (auto *invoices = frame.openScreen<FatWindow>(u"fat"))
            invoices->fat().sqlyukle();
    });
    return window;
}

QWidget *cr(MainWindow &frame, QStringView)
{
    auto *window = closable(frame, new CrWindow(frame.program()));
    QObject::connect(window, &CrWindow::guncellemeWanted, &frame, [&frame] {
        frame.open({u"sqlbaglanti", Screen::Modal, u"cari-unvanlarını-logoda-güncelleme",
                    &sqlbaglanti<SqlbaglantiWindow::Way::Update>});
    });
    return window;
}

QWidget *stoktrf(MainWindow &frame, QStringView)
{
    auto *window = closable(frame, new StoktrfWindow(frame.program()));
    QObject::connect(window, &StoktrfWindow::meyWanted, &frame, [&frame] { frame.open(u"st"); });
    return window;
}

// Dialogs.

template<class Window>
QWidget *dialog(MainWindow &frame, QStringView)
{
    return new Window(frame.program(), &frame);
}

template<void tell(MainWindow &, Closing)>
QWidget *definition(MainWindow &frame, QStringView word)
{
    auto *window = new DefinitionWindow(frame.program(), *definitionOf(word), &frame);
    QObject::connect(window, &DefinitionWindow::closed, &frame,
                     [&frame](Closing how) { tell(frame, how); });
    return window;
}

template<void tell(MainWindow &, const QString &)>
QWidget *value(MainWindow &frame, QStringView word)
{
    auto *window = new ValueWindow(frame.program(), valueDialogOf(word), &frame);
    QObject::connect(window, &ValueWindow::saved, &frame,
                     [&frame](const QString &code) { tell(frame, code); });
    return window;
}

QWidget *kdvmu(MainWindow &frame, QStringView)
{
    auto *window = new KdvmuWindow(frame.program(), &frame);
    QObject::connect(window, &KdvmuWindow::saved, &frame,
                     [&frame](const QString &genel, const QString &satir) {
                         auto *invoices = frame.openScreen<FatWindow>(u"fat");
                         if (!invoices)
                             return;
                         invoices->fat().tanimlar.kdvmuafiyetgenel = genel;
                         invoices->fat().tanimlar.kdvmuafiyetsatir = satir;
                     });
    return window;
}

using enum Screen::Kind;

// Every screen, how it stands to the frame, its page in the guide, and how it is made; in the angle
// brackets, of what it is made or who is told afterwards. A screen is added by adding its row here,
// and an entry that opens it in entries.cpp.
constexpr auto screens = std::to_array<Screen>({
    {u"cr", Transfer, u"cari-kartlar", &cr},
    {u"stoktrf", Transfer, u"stok-kartları", &stoktrf},
    {u"st", Transfer, u"mey-stok-listesi", &transfer<StWindow>},
    {u"fat", Transfer, u"sap-faturaları", &invoices<FatWindow>, &load<FatWindow>},
    {u"fatduz", Transfer, u"düzey-faturaları", &invoices<FatduzWindow>, &load<FatduzWindow>},
    {u"cafis", Transfer, u"cari-fişler", &slips<cafis>},
    {u"cafis2", Transfer, u"seyahat-tahsilatları", &slips<cafis2>},
    {u"cafis3", Transfer, u"pos-analizi", &slips<cafis3>},
    {u"carifisduzey", Transfer, u"düzey-tahsilatları", &slips<carifisduzey>},
    {u"sayimform", Transfer, u"sayım", &transfer<SayimWindow>, &load<SayimWindow>},
    {u"urunform", Modal, u"bayi-fiyatları", &dialog<UrunWindow>},
    {u"ayr", Modal, u"dosya-konumları", &dialog<AyrWindow>},
    {u"fir", Modal, u"firma-tanımlaması", &definition<tellInvoices>},
    {u"muhkod", Modal, u"muhasebe-hesap-kodları", &definition<tellNobody>},
    {u"odmplan", Modal, u"ödeme-plan-kodu", &definition<tellInvoicesIfByButton>},
    {u"birimseti", Modal, u"birim-setleri", &definition<tellInvoices>},
    {u"ststatu", Modal, u"stok-statü-kayıtları", &definition<tellNobody>},
    {u"per", Modal, u"personel-kayıtları", &definition<tellInvoices>},
    {u"ozkod", Modal, u"fatura-özel-kodları", &definition<tellInvoices>},
    {u"stokozkod", Modal, u"stok-özel-kodları", &definition<tellStockCards>},
    {u"bankakodu", Modal, u"banka-hesap-kodu", &value<tellBankCode>},
    {u"brmset", Modal, u"stok-birim-seti-kodu", &value<tellUnitSet>},
    {u"kskod", Modal, u"kasa-kodu", &value<tellCashCode>},
    {u"kdvmu", Beside, u"kdv-muafiyet-yazısı", &kdvmu},
    {u"sqlbaglanti", Modal, u"sql-server-bağlantısı",
     &sqlbaglanti<SqlbaglantiWindow::Way::Settings>},
});

} // namespace

std::span<const Screen> allScreens()
{
    return screens;
}

const Screen *screenOf(QStringView word)
{
    const auto *const found = std::ranges::find(screens, word, &Screen::word);
    return found == screens.end() ? nullptr : found;
}

} // namespace kervan
