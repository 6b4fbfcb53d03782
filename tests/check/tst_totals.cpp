#include "check/screens/totalsline.h"
#include "controls/gridview.h"
#include "controls/linkbutton.h"
#include "controls/notestrip.h"
#include "support/cells.h"
#include "support/table.h"

#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

enum Column { No, Date, Customer, Amount, Vat };

ListShape shape()
{
    return {.what = u"fatura"_s,
            .number = No,
            .date = Date,
            .customer = Customer,
            .amounts = {Amount, Vat}};
}

ListShape oneAmount()
{
    ListShape one = shape();
    one.amounts = {Amount};
    return one;
}

// Rows of "number date customer amount vat".
void fill(Grid &list, const QStringList &rows)
{
    const Grid::Refill refill(list);
    list.clear();
    for (const QString &each : rows) {
        const QStringList cells = each.split(u' ');
        const int row = list.addRow(cells[0]);
        for (int column = 1; column < cells.size(); ++column)
            list.setCell(row, column, cells[column]);
    }
}

class List : public Grid
{
public:
    explicit List(const QStringList &rows = {})
        : Grid({{u"No"_s}, {u"Tarih"_s}, {u"Cari"_s}, {u"Tutar"_s}, {u"Kdv"_s}}, Tickable)
    {
        fill(*this, rows);
    }
    QString ticks() const
    {
        QString marks;
        for (int row = 0; row < rows(); ++row)
            marks += ticked(row) ? u'x' : u'-';
        return marks;
    }
};

// A screen of a list and its line.
struct Screen
{
    List list;
    Notes notes;
    QWidget window;
    GridView view{list, u"l1"_s};
    TotalsLine line{&window, notes};

    Screen()
    {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(&view);
        column->addWidget(&line);
        line.addList(list, &view, &oneAmount);
        window.resize(1200, 300);
        window.show();
        [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(&window);
    }
    QString label(const QString &name)
    {
        QTest::qWait(1); // it is told once the keys are through
        const auto *found = line.findChild<CutLabel *>(name);
        return found->isVisibleTo(&line) ? found->text() : QString();
    }
    QString told() { return label(u"toplamlar"_s); }
    LinkButton *link(const QString &name) { return line.findChild<LinkButton *>(name); }
};

} // namespace

class TotalsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aListIsToldAsItStands_data()
    {
        // Row 0 is ticked where the case says so; a limit is at 50.
        addTable(uR"(
case                       ; rows                                   ; ticks ; told
nothing                    ;                                        ;       ;
no tick                    ; F1 a c 10,00 1,8|F2 a c 5 0            ; --    ; 2 fatura · işaretli yok
exact beyond a double      ; F1 a c 0,10 0|F2 a c 9.007.199.254.740,99 0,005 ; xx ; 2 fatura · 2 işaretli Tutar 9.007.199.254.741,09 · 1 kasa sınırı altında
unreadable, told and left  ; F1 a c 10,00 x|F2 a c|F3 a c 1 1       ; xx-   ; 3 fatura · 2 işaretli Tutar 10,00 · 1 kasa sınırı altında · 3 tutar okunamadı
negative                   ; F1 a c -1.234,50 -1|F2 a c 34,50 1     ; xx    ; 2 fatura · 2 işaretli Tutar -1.200,00 · 2 kasa sınırı altında)"_s);
    }
    void aListIsToldAsItStands()
    {
        List list(fetch("rows").split(u'|', Qt::SkipEmptyParts));
        Totals totals(list, &shape);
        totals.setBelowLimit([&list](int row) {
            const auto amount = Decimal::ofCell(list.cell(row, Amount));
            if (!amount)
                throw Failure(u"no number"_s);
            return *amount < *Decimal::ofCell(u"50");
        });
        for (int row = 0; row < list.rows(); ++row)
            list.setTicked(row, fetch("ticks")[row] == u'x');
        QCOMPARE(totals.told().join(u" · "_s), fetch("told"));
    }

    void eachColumnOfAmountsIsSummedUpByItself()
    {
        List list({u"F1 a c 10,00 1,805"_s, u"F2 a c 5 x"_s});
        list.setAllTicked(true);
        const Totals totals(list, &shape);
        QCOMPARE(totals.amountsOf(totals.taken()), QStringList({u"Tutar 15,00"_s, u"Kdv 1,805"_s}));
        QCOMPARE(totals.amountsOf(totals.of({{1, 7}})),
                 QStringList({u"Tutar 5,00"_s, u"Kdv 0,00"_s}));
    }

    // Whatever is done to a list, what ran along is what a walk over it would give.
    void sumsThatRunAlongStayThoseOfTheRows()
    {
        List list;
        ListShape now = shape();
        Totals totals(list, [&now] { return now; });
        const auto check = [&](const char *after) {
            RowSums walked = totals.of({});
            for (int row = 0; row < list.rows(); ++row) {
                if (!list.ticked(row))
                    continue;
                ++walked.rows;
                for (const int column : {Amount, Vat}) {
                    const auto amount = Decimal::ofCell(list.cell(row, column));
                    walked.unreadable += !amount;
                    walked.amounts[column - Amount] += amount.value_or(Decimal());
                }
            }
            QVERIFY2(totals.taken() == walked, after);
        };
        check("nothing");
        fill(list, {u"F1 a c 10 1"_s, u"F2 a c x 2"_s, u"F3 a c 30 3"_s});
        check("a read");
        list.setTicked(1, true);
        check("a tick");
        list.setTicked(1, true);
        check("the same tick");
        list.setAllTicked(true);
        check("all");
        list.setCell(1, Amount, u"20"_s);
        check("an amount that became one");
        QCOMPARE(totals.taken().amounts.first().text(), u"60,00"_s);
        list.keepWhere([](int row) { return row != 0; });
        check("a removal");
        list.addRow(u"F4"_s);
        list.setTicked(2, true);
        check("a row more");
        list.tickWhere([](int row) { return row == 0; });
        check("others");
        now = oneAmount(); // its columns are others
        list.setColumns({{u"No"_s}});
        list.addRow(u"1"_s);
        list.setTicked(0, true);
        QCOMPARE(totals.taken().unreadable, 1); // the column is gone
    }

    // The rows that each step looks at are counted, and not how long it takes.
    void eachStepLooksAtARowOnceHoweverLongTheListIs_data()
    {
        QTest::addColumn<int>("n");
        QTest::newRow("n") << 100;
        QTest::newRow("4n") << 400;
    }
    void eachStepLooksAtARowOnceHoweverLongTheListIs()
    {
        QFETCH(const int, n);
        QStringList rows;
        for (int row = 0; row < n; ++row)
            rows << u"F%1 a c 1 1"_s.arg(row);
        List list(rows);
        list.rememberSteps();
        GridView view(list, u"l1"_s);
        Totals totals(list, &oneAmount);
        TickOffer offer(list, &oneAmount);
        int summed = 0;
        int shown = 0;
        int told = 0;
        totals.setBelowLimit([&](int) { return ++summed > 0; });
        view.filter({u"x"_s, [&](int) {
                         return ++shown > 0;
                     }});
        connect(&list, &QAbstractItemModel::dataChanged, this,
                [&](const QModelIndex &first, const QModelIndex &last) {
                    told += last.row() - first.row() + 1;
                });
        connect(&list, &QAbstractItemModel::modelReset, this, [&] { ++told; });
        const auto looks = [&] {
            totals.told();
            return QList<int>{std::exchange(summed, 0), std::exchange(shown, 0),
                              std::exchange(told, 0)};
        };
        QCOMPARE(looks(), QList<int>({0, n, 0})); // nothing is ticked
        for (int row = 0; row < n; ++row) {
            list.setTicked(row, true);
            totals.told();
        }
        QCOMPARE(looks(), QList<int>({n, 0, n}));
        int asked = 0;
        list.keepWhere([&asked](int row) { return ++asked > 0 && row % 2 == 0; });
        QCOMPARE(asked, n);
        QCOMPARE(looks(), QList<int>({n / 2, n / 2, 1})); // those that are left
        QVERIFY(list.undo());
        QCOMPARE(looks(), QList<int>({n, n, 1}));
        list.setAllTicked(false);
        QCOMPARE(looks(), QList<int>({n, 0, n}));
    }

    void aListWithoutTicksIsWrittenWhole()
    {
        Grid list({{u"No"_s}, {u"Miktar"_s}});
        fill(list, {u"1 1.200"_s, u"2 34,5"_s});
        const Totals totals(list,
                            [] { return ListShape{.what = u"sayım satırı"_s, .amounts = {1}}; });
        QCOMPARE(totals.told().join(u'|'), u"2 sayım satırı|Miktar 1.234,5"_s);
        QCOMPARE(totals.taken().rows, 2);
    }

    void theTicksOfBeforeAReadAreGivenBack_data()
    {
        addTable(uR"(
case                                  ; by       ; before                                ; ticks ; after                                    ; offered ; given
by number, in another order           ; number   ; F1 d c 1|F2 d c 2|F3 d c 3            ; x-x   ; F3 d c 9|F2 d c 2|F1 d c 1               ; 2 ; x-x
some are gone                         ; number   ; F1 d c 1|F2 d c 2                     ; xx    ; F2 d c 2|F9 d c 2                        ; 1 ; x-
none is there                         ; number   ; F1 d c 1                              ; x     ; F2 d c 1                                 ; 0 ; -
the second of two with one number     ; number   ; F1 d c 1|F1 d c 2                     ; -x    ; F1 d c 1|F2 d c 5|F1 d c 2               ; 1 ; --x
one of two, and now nobody knows which; number   ; F1 d c 1|F1 d c 2                     ; -x    ; F1 d c 2                                 ; 0 ; -
all of two, and there are three now   ; number   ; F1 d c 1|F1 d c 2                     ; xx    ; F1 d c 1|F1 d c 2|F1 d c 3               ; 2 ; xx-
new numbers at each read              ; movement ; N1 d1 c 5|N2 d1 c 6|N3 d2 c 5         ; x-x   ; N7 d2 c 5|N8 d1 c 6|N9 d1 c 5            ; 2 ; x-x
equal movements, one was ticked       ; movement ; N1 d c 5|N2 d c 5                     ; x-    ; N3 d c 5|N4 d c 5                        ; 1 ; x-)"_s);
    }
    void theTicksOfBeforeAReadAreGivenBack()
    {
        ListShape by = oneAmount();
        by.renumbered = fetch("by") == u"movement";
        List list(fetch("before").split(u'|'));
        TickOffer offer(list, [by] { return by; });
        for (int row = 0; row < list.rows(); ++row)
            list.setTicked(row, fetch("ticks")[row] == u'x');
        fill(list, fetch("after").split(u'|'));
        QCOMPARE(list.tickedCount(), 0); // nothing is ticked by itself
        QCOMPARE(offer.rows(), fetch("offered").toInt());
        offer.accept();
        QCOMPARE(list.ticks(), fetch("given"));
        QCOMPARE(offer.rows(), 0);
    }

    void whatIsOfferedIsWhatTheUserHadAndNotWhatHeRemoved()
    {
        const QStringList rows{u"F1 d c 1"_s, u"F2 d c 2"_s, u"F3 d c 3"_s};
        List list(rows);
        TickOffer offer(list, &oneAmount);
        list.setTicked(0, true);
        list.keepWhere([&](int row) { return !list.ticked(row); });
        fill(list, rows);
        QCOMPARE(offer.rows(), 0); // it was ticked to go
        list.setTicked(1, true);
        fill(list, rows);
        fill(list, rows); // a date that reads it twice
        QCOMPARE(offer.rows(), 1);
        list.setTicked(2, true); // goes on by himself
        QCOMPARE(offer.rows(), 1);
        offer.accept();
        QCOMPARE(list.ticks(), u"-xx"_s);
        list.setAllTicked(false);
        QCOMPARE(offer.rows(), 0); // he takes them away
        fill(list, rows);
        QCOMPARE(offer.rows(), 0);
        fill(list, {});
        list.setColumns({{u"No"_s}});
        QCOMPARE(offer.rows(), 0);
    }

    void theLineTellsTicksSelectionAndOffer()
    {
        Screen screen;
        QCOMPARE(screen.told(), QString());
        fill(screen.list, {u"F1 d c 1.000,50"_s, u"F2 d c 2"_s, u"F3 d c 3"_s});
        screen.list.setTicked(0, true);
        QCOMPARE(screen.told(), u"3 fatura · 1 işaretli 1.000,50"_s);
        screen.view.selectAll();
        QCOMPARE(screen.told(), u"3 fatura · 1 işaretli 1.000,50 · vurgulu 3 satır 1.005,50"_s);
        screen.view.selectRow(1);
        QCOMPARE(screen.told(), u"3 fatura · 1 işaretli 1.000,50"_s); // of one row it is its cell
        QVERIFY(!screen.link(u"isaretgetir"_s));
        fill(screen.list, {u"F1 d c 7"_s});
        QCOMPARE(screen.told(), u"1 fatura · işaretli yok"_s);
        LinkButton *back = screen.link(u"isaretgetir"_s);
        QCOMPARE(back->text(), u"İşaretleri geri getir (1)"_s);
        QTest::keyClick(&screen.view, Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(screen.told(), u"1 fatura · 1 işaretli 7,00"_s);
        QVERIFY(!back->isVisible());
        QTest::keyClick(&screen.view, Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(screen.list.ticks(), u"x"_s); // a key without its link does nothing
    }

    void whatWasWrittenStandsWithItsSumUntilTheNextRead()
    {
        Screen screen;
        fill(screen.list, {u"F1 d c 10"_s, u"F2 d c 2"_s});
        screen.list.setTicked(0, true);
        screen.notes.begin();
        screen.notes.addDocument(u"/tmp/satis.xml"_s, u"fatura"_s, 1, QTime(9, 5));
        screen.notes.addDocument(u"/tmp/satis-KASANAKIT.xml"_s, u"kasa fişi"_s, 0, QTime(9, 6));
        const QString told = u"satis.xml yazıldı: 1 fatura, 10,00, 09:05 • "
                             "satis-KASANAKIT.xml yazıldı: 0 kasa fişi, 09:06"_s;
        QCOMPARE(screen.label(u"belge"_s), told);
        screen.list.setAllTicked(true); // later ticks are of no document
        QCOMPARE(screen.label(u"belge"_s), told);
        QVERIFY(screen.link(u"klasordegoster"_s)->isVisible());
        screen.line.setDisagreement(u"Belgede 0 fatura var."_s, {u"/tmp/satis.xml"_s});
        QCOMPARE(screen.label(u"tutmayan"_s), u"Belgede 0 fatura var."_s);
        QCOMPARE(screen.label(u"belge"_s), // in green is what is good
                 told.section(u" • "_s, 1));
        screen.line.setDisagreement({});
        QCOMPARE(screen.label(u"belge"_s), told);
        screen.notes.begin();
        QCOMPARE(screen.label(u"belge"_s) + screen.label(u"tutmayan"_s), QString());
        QVERIFY(!screen.link(u"klasordegoster"_s)->isVisible());
    }

    // Of two lists with as many ticks, a sum would be a guess.
    void aSumThatMayBeAnotherListsIsNotTold()
    {
        Screen screen;
        List bank({u"B1 d c 99"_s});
        GridView view(bank, u"l2"_s);
        screen.line.addList(bank, &view, &oneAmount);
        fill(screen.list, {u"F1 d c 10"_s, u"F2 d c 20"_s});
        bank.setTicked(0, true);
        screen.list.setTicked(0, true);
        QCOMPARE(screen.told(), u"2 fatura · 1 işaretli 10,00  |  1 fatura · 1 işaretli 99,00"_s);
        screen.notes.addDocument(u"/tmp/a.xml"_s, u"fiş"_s, 1, QTime(9, 5));
        QCOMPARE(screen.label(u"belge"_s), u"a.xml yazıldı: 1 fiş, 09:05"_s);
        screen.notes.begin();
        screen.list.setTicked(1, true);
        screen.notes.addDocument(u"/tmp/a.xml"_s, u"fiş"_s, 2, QTime(9, 5));
        QCOMPARE(screen.label(u"belge"_s), u"a.xml yazıldı: 2 fiş, 30,00, 09:05"_s);
    }

    void whereRoomLacksTheLineIsCutAndTheScreenStaysAsWideAsItIs()
    {
        Screen screen;
        fill(screen.list, {u"F1 d c 10"_s, u"F2 d c 2"_s});
        screen.list.setAllTicked(true);
        screen.notes.addDocument(u"/tmp/%1.xml"_s.arg(u"uzun"_s.repeated(40)), u"fatura"_s, 2,
                                 QTime(9, 5));
        const QString told = screen.told();
        screen.window.resize(420, 300);
        QCoreApplication::processEvents();
        QCOMPARE(screen.window.width(), 420);
        const auto *label = screen.line.findChild<CutLabel *>(u"toplamlar"_s);
        QCOMPARE(label->accessibleName(), told);
        QVERIFY(label->toolTip().contains(u"2 işaretli 12,00"_s));
        const auto *written = screen.line.findChild<CutLabel *>(u"belge"_s);
        QVERIFY(written->width() < written->sizeHint().width());
        const QRect link = screen.link(u"klasordegoster"_s)->geometry();
        QVERIFY(screen.line.rect().contains(link)); // the way to the file is never cut
    }
};

QTEST_MAIN(TotalsTest)
#include "tst_totals.moc"
