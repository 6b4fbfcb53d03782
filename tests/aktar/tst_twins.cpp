// The window and the command over the same source: what they leave must not differ by a byte.

#include "aktar/folder.h"
#include "cards/screens/crwindow.h"
#include "cards/screens/stoktrfwindow.h"
#include "cards/screens/stwindow.h"
#include "controls/gridview.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/screens/fatwindow.h"
#include "slips/desk.h"
#include "slips/screens/slipwindow.h"
#include "stocktake/screens/sayimwindow.h"
#include "support/driving.h"
#include "support/places.h"
#include "support/table.h"
#include "support/workbooks.h"
#include "text/numbers.h"
#include "workbook/workbook.h"

#include <QComboBox>
#include <QRandomGenerator>

using namespace kervan;

namespace {

/// Keeps what boxes say.
class HeardBoxes : public Boxes
{
public:
    QStringList lines;
    void show(const Box &box) override { lines << lineOf(box); }
    bool ask(const Box &box) override
    {
        lines << lineOf(box);
        return false;
    }
};

std::unique_ptr<QWidget> openWindow(const QString &screen, Program &program)
{
    const auto loaded = [](auto window) -> std::unique_ptr<QWidget> {
        window->load();
        return window;
    };
    if (screen == u"fat")
        return loaded(std::make_unique<FatWindow>(program));
    if (screen == u"fatduz")
        return loaded(std::make_unique<FatduzWindow>(program));
    if (screen == u"sayimform")
        return loaded(std::make_unique<SayimWindow>(program));
    if (screen == u"cr")
        return std::make_unique<CrWindow>(program);
    if (screen == u"stoktrf")
        return std::make_unique<StoktrfWindow>(program);
    if (screen == u"st")
        return std::make_unique<StWindow>(program);
    return std::make_unique<SlipWindow>(program, slipForm(screen));
}

// "c3=MERKEZ ŞUBE": the entry of a list as the user picks it, or the text of a field; a box that is
// ticked has no value.
void choose(QWidget &window, const QString &choice)
{
    const QString name = choice.section(u'=', 0, 0);
    const QString text = choice.section(u'=', 1);
    if (auto *list = window.findChild<QComboBox *>(name); list && !list->isEditable()) {
        const int place = list->findText(text);
        QVERIFY2(place >= 0, qPrintable(choice));
        list->setCurrentIndex(place);
        Q_EMIT list->activated(place);
    } else if (list) {
        QTest::keyClicks(list->lineEdit(), text);
        QTest::keyClick(list->lineEdit(), Qt::Key_Return);
    } else if (!choice.contains(u'=')) {
        window.findChild<QAbstractButton *>(name)->click();
    } else {
        type(window, name, text);
    }
}

// --- Sources many times as long as the samples, of other numbers

// Other digits between two columns, the first of which is 1.
void vary(QByteArray &line, qsizetype first, qsizetype last, QRandomGenerator &dice)
{
    for (qsizetype i = first - 1; i < last && i < line.size(); ++i) {
        if (line[i] >= '0' && line[i] <= '9')
            line[i] = char('0' + dice.bounded(10));
    }
}

QByteArray manyLines(const QByteArray &sample, const QString &ending, QRandomGenerator &dice)
{
    QByteArray lines;
    for (int round = 0; round < 20; ++round) {
        for (QByteArray line : sample.split('\n')) {
            if (line.startsWith("@5")) {
                vary(line, 80, 147, dice); // number and amounts
            } else if (line.startsWith("@6")) {
                vary(line, 97, 135, dice);
            } else if (ending == u"cariler.txt") {
                vary(line, 3, 10, dice);
            } else if (ending == u"stoklar.txt") {
                vary(line, 25, 33, dice);
                vary(line, 125, 131, dice);
            } else if (ending == u"sayim.txt") {
                vary(line, 10, 20, dice);
            }
            lines += line + '\n';
        }
    }
    return lines;
}

bool isAmount(const QString &text)
{
    return text.contains(u'.') != text.contains(u',') && number(QString(text).replace(u'.', u','));
}

void writeManyRecords(const QString &sample, const QString &sheetName, int headings,
                      const QString &path, QRandomGenerator &dice)
{
    const auto sheet = readSheet(sample, sheetName);
    QList<BookRow> rows;
    const auto add = [&](int record, bool varies) {
        BookRow row;
        for (int field = 0; field < sheet->columns(); ++field) {
            const QString text = sheet->text(record, field);
            if (const auto value = sheet->number(record, field))
                row << BookCell(varies ? *value + dice.bounded(1000) / 100.0 : *value);
            else if (varies && isAmount(text))
                row << BookCell(QString::number(dice.bounded(900) + 100) + text.right(3));
            else
                row << BookCell(text);
        }
        rows << row;
    };
    for (int record = 0; record < headings; ++record)
        add(record, false);
    for (int round = 0; round < 20; ++round) {
        for (int record = headings; record < sheet->rows(); ++record)
            add(record, true);
    }
    writeWorkbook(path, sheetName, rows);
}

} // namespace

class TwinsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCommandLeavesWhatTheWindowLeaves_data()
    {
        addTable(uR"(
case                ; screen       ; source                  ; window                                       ; open             ; tick   ; write            ; least ; sheet    ; options
fatura              ; fat          ; ornek.bif               ; c3=MERKEZ ŞUBE/c1=18/c5=30GUN<>30 gün vadeli ; chameleonButton5 ; Check2 ; chameleonButton1 ; 900   ;          ; --firma=MERKEZ ŞUBE/--kdv=18/--plan=30GUN
fatura iade         ; fat          ; ornek.bif               ; c3=İZMİR ŞUBE/fatbilgi=30 (Satış İade)/pers=00100102 ; chameleonButton5 ; Check2 ; chameleonButton1 ; 900   ;          ; --firma=İZMİR ŞUBE/--tur=30/--personel=00100102
fatura okunur       ; fat          ; ornek.bif               ; c3=MERKEZ ŞUBE/+okunurBicim                  ; chameleonButton5 ; Check2 ; chameleonButton1 ; 900   ;          ; --firma=MERKEZ ŞUBE/--okunur-bicim
fatura firmasız     ; fat          ; ornek.bif               ;                                              ; chameleonButton5 ; Check2 ; chameleonButton1 ;       ;          ;
fatura süzülü       ; fat          ; ornek.bif               ; c3=MERKEZ ŞUBE/c2=KARTON/c4=SOGUK/d1=05.03.2024/d2=20.03.2024/Check1 ; chameleonButton5 ; Check2 ; chameleonButton1 ; 900   ;          ; --firma=MERKEZ ŞUBE/--birim-seti=KARTON/--ozel-kod=SOGUK/--ilk-tarih=05.03.2024/--son-tarih=20.03.2024
fatura otomatik     ; fat          ; ornek.bif               ; c3=MERKEZ ŞUBE/c1=18/c2=PAKET                ; chameleonButton5 ; Check2 ; chameleonButton3 ; 900   ;          ; --firma=MERKEZ ŞUBE/--kdv=18/--birim-seti=PAKET/--otomatik
fatura yarım        ; fat          ; ornek.bif               ; c3=MERKEZ ŞUBE/c1=18                         ; chameleonButton5 ; Check2 ; chameleonButton3 ;       ;          ; --firma=MERKEZ ŞUBE/--kdv=18/--otomatik
duzey               ; fatduz       ; duzey-fatura.xlsx       ; c3=MERKEZ ŞUBE                               ; buton1           ; Check2 ; chameleonButton1 ; 900   ; Sheet1   ; --firma=MERKEZ ŞUBE
duzey alış          ; fatduz       ; duzey-fatura.xlsx       ; c3=İZMİR ŞUBE/+fatbilgi=20 (Alış Faturaları) ; buton1           ; Check2 ; chameleonButton1 ; 900   ; Sheet1   ; --firma=İZMİR ŞUBE/--tur=20
duzey süzülü        ; fatduz       ; duzey-fatura.xlsx       ; c3=MERKEZ ŞUBE/c4=SICAK/Text1=Sheet1/pers=DZ01/+Check1/+d1=05.03.2024/+d2=06.03.2024 ; buton1 ; Check2 ; chameleonButton1 ; 900 ; Sheet1 ; --firma=MERKEZ ŞUBE/--ozel-kod=SICAK/--sayfa=Sheet1/--personel=DZ01/--ilk-tarih=05.03.2024/--son-tarih=06.03.2024
cari                ; cr           ; cariler.txt             ;                                              ; chameleonButton5 ;        ; chameleonButton1 ; 900   ;          ;
cari guncelle       ; cr           ; cariler.txt             ;                                              ; chameleonButton5 ;        ; chameleonButton2 ; 900   ;          ; --belge=guncelle
stok                ; stoktrf      ; stoklar.txt             ; c1=KMP-24- Kampanyalı ürün/c3=GIDA- Gıda ürünleri/brmseti=07 ; chameleonButton5 ;        ; chameleonButton1 ; 900   ;          ; --ozel-kod=KMP-24/--ozel-kod3=GIDA/--birim-seti=07
stok kodları        ; stoktrf      ; stoklar.txt             ; c1=ICECEK- İçecekler/c2=GIDA- Gıda ürünleri/c4=KMP-24- Kampanyalı ürün/c5=ICECEK- İçecekler/+okunurBicim ; chameleonButton5 ; ; chameleonButton1 ; 900 ; ; --ozel-kod=ICECEK/--ozel-kod2=GIDA/--ozel-kod4=KMP-24/--ozel-kod5=ICECEK/--okunur-bicim
mey                 ; st           ; mey-stok.xls            ; c1=8/c2=Koli/c3=Bar                          ; chameleonButton5 ;        ; chameleonButton1 ; 900   ; cari mey ; --kdv=8/--birim-seti=Koli/--statu=Bar
mey otomatik        ; st           ; mey-stok.xls            ; c1=8/c2=Koli                                 ; chameleonButton5 ;        ; chameleonButton3 ; 900   ; cari mey ; --kdv=8/--birim-seti=Koli/--otomatik
sayim               ; sayimform    ; sayim.txt               ; Text1=SYM000007                              ; chameleonButton5 ;        ; chameleonButton1 ; 900   ;          ; --fis-no=SYM000007
nakit               ; cafis        ; tahsilatlar.xlsx        ;                                              ; buton1           ; Check1 ; buton2           ; 900   ; Sayfa1   ;
nakit banka         ; cafis        ; tahsilatlar.xlsx        ; bankahesapno1=B77                            ; buton1           ; Check2 ; lvButtons_H2     ; 90    ; Sayfa1   ; --belge=banka/--banka-hesabi=B77
seyahat             ; cafis2       ; 15032021-00100101.xls   ; Text1=Sayfa1                                 ; buton1           ; Check1 ; buton2           ; 900   ; Sayfa1   ; --sayfa=Sayfa1
nakit sayfa         ; cafis        ; tahsilatlar.xlsx        ; Text1=Sayfa1/+okunurBicim                    ; buton1           ; Check1 ; buton2           ; 900   ; Sayfa1   ; --sayfa=Sayfa1/--okunur-bicim
seyahat banka       ; cafis2       ; 15032021-00100101.xls   ; bankahesapno1=B77                            ; buton1           ; Check1 ; buton2           ; 900   ; Sayfa1   ; --banka-hesabi=B77
pos sayfa           ; cafis3       ; POSANALIZ-20210315.xlsx ; Text1=Sayfa1/bankahesapno1=B77               ; buton1           ; Check2 ; lvButtons_H2     ; 90    ; Sayfa1   ; --belge=banka/--sayfa=Sayfa1/--banka-hesabi=B77
duzey-tahsilat hesap ; carifisduzey ; duzey-kredikarti.xlsx  ; bankahesapno1=B77                            ; lvButtons_H3     ; Check1 ; lvButtons_H2     ; 900   ; Sheet1   ; --belge=kart/--banka-hesabi=B77
pos                 ; cafis3       ; POSANALIZ-20210315.xlsx ;                                              ; buton1           ; Check1 ; buton2           ; 900   ; Sayfa1   ;
pos banka           ; cafis3       ; POSANALIZ-20210315.xlsx ;                                              ; buton1           ; Check2 ; lvButtons_H2     ; 90    ; Sayfa1   ; --belge=banka
duzey-tahsilat      ; carifisduzey ; duzey-nakit.xlsx        ;                                              ; buton1           ; Check1 ; buton2           ; 900   ; Sheet1   ;
duzey-tahsilat kart ; carifisduzey ; duzey-kredikarti.xlsx   ;                                              ; lvButtons_H3     ; Check1 ; lvButtons_H2     ; 900   ; Sheet1   ; --belge=kart
duzey-tahsilat ters ; carifisduzey ; duzey-nakit.xlsx        ; Text1=yok                                    ; buton1           ; Check1 ; buton2           ;       ;          ; --sayfa=yok)"_s);
    }
    void theCommandLeavesWhatTheWindowLeaves()
    {
        for (const bool generated : {false, true}) {
            const QTemporaryDir sources;
            const QString source = sourceIn(sources.path(), generated);
            SampleFolder byWindow;
            nameAutomaticTarget(byWindow);
            const QStringList heard = driveWindow(byWindow, source);
            SampleFolder byCommand;
            nameAutomaticTarget(byCommand);
            const int status = runTwin(byCommand, source);
            const auto documents = filesOf(byWindow.documents, {u"*"_s});
            QCOMPARE(filesOf(byCommand.documents, {u"*"_s}), documents);
            QCOMPARE(status == NothingWritten, documents.isEmpty());
            QCOMPARE(filesOf(byCommand.folder, {u"*"_s}), filesOf(byWindow.folder, {u"*"_s}));
            QCOMPARE(byCommand.sqlServer.statements, byWindow.sqlServer.statements);
            QCOMPARE(byCommand.sqlServer.texts, byWindow.sqlServer.texts);
            QCOMPARE(boxLines(byCommand.told), heard);
            const bool refused = fetch("least").isEmpty();
            QCOMPARE(documents.isEmpty(), refused);
            if (!refused)
                QVERIFY(documents.first().size() > fetch("least").toInt() * (generated ? 10 : 1));
        }
    }

private:
    static QString sourceIn(const QString &folder, bool generated)
    {
        const QString sample = samplePath(fetch("source"));
        if (!generated)
            return sample;
        QRandomGenerator dice(7);
        QString path = folder + u'/' + fetch("source");
        const QString sheet = fetch("sheet");
        if (path.endsWith(u".txt"_s) || path.endsWith(u".bif"_s))
            writeBytes(path, manyLines(readBytes(sample), fetch("source"), dice));
        else if (sheet.isEmpty())
            QFile::copy(sample, path);
        else
            writeManyRecords(sample, sheet, 1, path, dice);
        return path;
    }

    static void nameAutomaticTarget(SampleFolder &side)
    {
        for (const QString &column : {u"xf"_s, u"xs"_s}) // from the program folder on
            side.fill(u"update yol set %1='../belgeler/belge.xml' where id='1'"_s.arg(column));
    }

    static QStringList driveWindow(SampleFolder &side, const QString &source)
    {
        HeardBoxes boxes;
        Program program{side.folder, {}, {}, {}, boxes, side.dialogs, side.clock, side.sqlServer};
        const auto window = openWindow(fetch("screen"), program);
        window->show();
        const QStringList choices = fetch("window").split(u'/', Qt::SkipEmptyParts);
        for (const QString &choice : choices) {
            if (!choice.startsWith(u'+'))
                choose(*window, choice);
        }
        side.dialogs.answers = {source};
        press(*window, fetch("open"));
        for (const QString &choice : choices) {
            if (choice.startsWith(u'+'))
                choose(*window, choice.sliced(1));
        }
        if (!fetch("tick").isEmpty())
            window->findChild<QAbstractButton *>(fetch("tick"))->click();
        side.dialogs.answers = {side.document(u"belge.xml"_s)};
        press(*window, fetch("write"));
        return boxes.lines;
    }

    static int runTwin(SampleFolder &side, const QString &source)
    {
        QStringList arguments{caseName().section(u' ', 0, 0), source};
        arguments += fetch("options").split(u'/', Qt::SkipEmptyParts);
        if (!arguments.contains(u"--otomatik"_s))
            arguments << u"--hedef"_s << side.document(u"belge.xml"_s);
        return side.run(arguments);
    }

    static QStringList boxLines(const QStringList &told)
    {
        QStringList lines;
        for (const QString &line : told) {
            const QString said = line.section(u": "_s, 1);
            for (const QString &title : {u"Dikkat: "_s, u"Tamam: "_s, u"Kervan Transfer: "_s}) {
                if (said.startsWith(title))
                    lines << said;
            }
        }
        return lines;
    }
};

QTEST_MAIN(TwinsTest)
#include "tst_twins.moc"
