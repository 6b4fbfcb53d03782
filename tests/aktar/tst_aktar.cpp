// The command by itself: what it takes, what it tells, how it ends, and what it leaves behind.

#include "aktar/folder.h"
#include "aktar/journal.h"
#include "base/wholefile.h"
#include "invoices/desk.h"
#include "support/failing.h"
#include "support/openelsewhere.h"
#include "support/places.h"
#include "support/table.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <filesystem>
#include <future>
#include <thread>

using namespace kervan;

namespace {

/// Four invoices of three days; the second one's customer takes e-invoices.
struct Branch : SampleFolder
{
    QString source = place.filePath(u"gün.bif"_s);

    Branch()
    {
        clock.moment = {QDate(2024, 3, 8), QTime(9, 5, 3)};
        write({u"F1"_s, u"F2"_s, u"F3"_s, u"F4"_s});
        sqlServer.answer = [](const QString &) -> SqlRows {
            return {{u"ACCEPTEINV"_s}, {{u"0"_s}}};
        };
    }
    void write(const QStringList &numbers)
    {
        QByteArray lines;
        for (const QString &number : numbers) {
            const QString day = u"2024030"_s + QString::number(6 + number.right(1).toInt() % 3);
            lines += header({.no = number, .date = day, .person = u"00100101"_s}) +
                     goods(u"KHV-100", u"1", u"100.00", u"100.00");
        }
        writeBytes(source, lines);
    }
    int fatura(const QString &target, const QStringList &more = {})
    {
        return run(QStringList{u"fatura"_s, source, u"--hedef"_s, document(target), u"--firma"_s,
                               u"MERKEZ ŞUBE"_s, u"--kdv"_s, u"18"_s, u"--plan"_s, u"30GUN"_s} +
                   more);
    }
    // The numbers of the rows that a selection takes.
    QString selected(const QStringList &options)
    {
        fatura({}, options + QStringList{u"--listele"_s, u"--bicim"_s, u"json"_s});
        QStringList numbers;
        for (const QString &line : out.split(u'\n', Qt::SkipEmptyParts)) {
            const QJsonObject row = QJsonDocument::fromJson(line.toUtf8()).object();
            if (!row[u"Seçili"].toString().isEmpty())
                numbers << row[u"Fatura Numarası"].toString();
        }
        return numbers.join(u' ');
    }
    QString recipe(const QByteArray &bytes)
    {
        writeBytes(place.filePath(u"gece.ini"_s), bytes);
        return place.filePath(u"gece.ini"_s);
    }
    QByteArray counter() const { return readBytes(sideFile(u"kasacariislemno.kvz"_s)); }
    QStringList written() const { return filesOf(documents, {u"*"_s}).keys(); }
};

} // namespace

class AktarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWrongUseIsToldAndLeavesNothing_data()
    {
        addTable(uR"(
case            ; arguments                                       ; told
nothing         ;                                                 ; Komutlar:
no such command ; faturalar                                       ; "faturalar" bir komut değil
no source       ; fatura                                          ; Kaynak dosyayı verin
no target       ; fatura a.bif                                    ; --hedef
unknown option  ; cari a.txt --firma=X --hedef=b.xml              ; "--firma" cari komutunun
missing value   ; fatura a.bif --hedef                            ; --hedef için değer eksik
empty variable  ; fatura a.bif --hedef --json                     ; --hedef için değer eksik
no such row     ; fatura a.bif --hedef=b.xml --sec=bazen          ; --sec için "bazen" olmaz
no number       ; fatura a.bif --hedef=b.xml --sec=no=,           ; --sec no= numara ister
no such day     ; fatura a.bif --hedef=b.xml --sec=tarih=yarın    ; "yarın" bir gün değil
no day of both  ; fatura a.bif --hedef=b.xml --sec=tarih=dun --sec=tarih=bugun ; hiçbir satıra
no number left  ; fatura a.bif --hedef=b.xml --sec=no=1,2 --sec=no=3 ; hiçbir satıra
neither of two  ; fatura a.bif --hedef=b.xml --sec=e-fatura --sec=e-fatura-degil ; hiçbir satıra
no such firm    ; fatura a.bif --hedef=b.xml --firma=YOK          ; Olanlar: MERKEZ ŞUBE, İZMİR ŞUBE
one of words    ; cari a.txt --hedef=b.xml --belge=sil            ; Olanlar: ekle, guncelle
not of cards    ; cari a.txt --hedef=b.xml --sec=e-fatura         ; listenin hepsini yazar
not of slips    ; nakit a.xlsx --hedef=b.xml --sec=e-fatura       ; E-fatura bu aktarımda seçilemez
one target      ; cari a.txt b.txt --hedef=c.xml                  ; İki kaynağın belgesi aynı
in the list     ; duzey a.xlsx --hedef=b.xml --tur=99             ; Olanlar: 10
no unit         ; fatura a.bif --hedef=b.xml --birim-seti=YOK     ; "YOK": tanımlarda yok
backwards       ; fatura a.bif --hedef=b.xml --sec=tarih=dun..01.03.2024 ; ilk gün (07.03.2024)
three days      ; fatura a.bif --hedef=b.xml --sec=tarih=dun..dun..dun ; bir gün değil
filter's days   ; fatura a.bif --hedef=b.xml --ilk-tarih=bugun --son-tarih=dun ; sonuncudan
form alone      ; cari a.txt --hedef=b.xml --bicim=csv            ; --listele ile verilir
form and json   ; cari a.txt --listele --json --bicim=csv         ; --json ile --bicim csv birlikte
watched form    ; izle a --tarif=b.ini --bicim=csv                ; "--bicim" izle komutunun
watched list    ; izle a --tarif=b.ini --listele                  ; "--listele" izle komutunun
no such word    ; cari a.txt --hedef={tarihh}.xml                 ; {tarihh}.xml
two targets     ; cari a.txt --hedef=b.xml --hedef=c.xml          ; iki kez verildi
no switch       ; cari a.txt --hedef=b.xml --uzerine-yaz=false    ; "false" olmaz: evet ya da hayır
not both        ; fatura a.bif --hedef=b.xml --yazilmislari-atla --uzerine-yaz ; birlikte verilmez
two looks       ; cari a.txt --listele --denetle                  ; birlikte verilmez
two names       ; mey a.xls --hedef=b.xml --otomatik              ; birlikte verilmez
no number       ; cari a.txt --hedef=c.xml --bekle=az             ; 0 ya da daha büyük
no recipe       ; cari a.txt --hedef=c.xml --tarif=yok.ini        ; yok.ini
no watched one  ; izle                                            ; --tarif ile tarifini verin)"_s);
    }
    void aWrongUseIsToldAndLeavesNothing()
    {
        Branch b;
        const auto before = filesOf(b.folder, {u"*"_s});
        QCOMPARE(b.run(fetch("arguments").split(u' ', Qt::SkipEmptyParts)), UsedWrongly);
        QVERIFY2(b.says(fetch("told")), qPrintable(b.told.join(u'\n')));
        QCOMPARE(b.told.size(), 1); // nor was a source opened, none of which is there
        QCOMPARE(filesOf(b.folder, {u"*"_s}), before);
    }

    void aFolderWithoutDatabasesIsNone()
    {
        Branch b;
        b.folder = b.documents;
        QCOMPARE(b.fatura(u"a.xml"_s), UsedWrongly);
        QVERIFY(b.says(u"bir program klasörü değil"_s));
        b.folder.clear(); // as a script's variable may be
        QCOMPARE(b.fatura(u"a.xml"_s), UsedWrongly);
        QVERIFY(b.says(u"--klasor boş verildi"_s));
    }

    void theEndTellsWhatHappened()
    {
        Branch b;
        QCOMPARE(b.fatura(u"a.xml"_s), Done);
        QCOMPARE(b.written(), QStringList({u"a-KASANAKIT.xml"_s, u"a.xml"_s}));
        QCOMPARE(b.told, QStringList({u"gün.bif: Tamam: Kasa Nakit Xml Dönüşümü Tamamlandı..."_s,
                                      u"gün.bif: Tamam: Xml Dönüşümü Tamamlandı..."_s}));
        QVERIFY2(b.out.contains(u"a.xml: 4 fatura, toplam "_s), qPrintable(b.out));
        QCOMPARE(b.run({u"fatura"_s, b.source, u"--hedef"_s, b.document(u"b.xml"_s),
                        u"--firma=MERKEZ ŞUBE"_s, u"-kdv=18"_s}),
                 DoneWithFindings);
        QVERIFY(b.says(u"Uyarı: Ödeme planı seçilmedi"_s));
        QCOMPARE(b.fatura(u"c.xml"_s, {u"--sec"_s, u"no=F9"_s}), NothingWritten);
        QVERIFY(b.says(u"seçilen satır yok"_s));
        b.source = b.place.filePath(u"yok.bif"_s);
        QCOMPARE(b.fatura(u"c.xml"_s), NothingWritten);
        QVERIFY(b.says(u"Dikkat: Fatura Listesinde Kayıt Bulunamadı...!"_s));
        QVERIFY(b.says(u"Bilgi: "_s));
        QCOMPARE(b.written().size(), 4);
        QCOMPARE(b.run({u"--help"_s}), Done);
        QVERIFY(b.out.contains(u"izle"_s));
    }

    void aDocumentThatIsThereStays()
    {
        for (const QString &there : {u"a.xml"_s, u"a-KASANAKIT.xml"_s}) {
            Branch b;
            writeBytes(b.document(there), "eski");
            const QByteArray counter = b.counter();
            QCOMPARE(b.fatura(u"a.xml"_s), NothingWritten);
            QVERIFY(b.says(u"zaten var"_s));
            QCOMPARE(readBytes(b.document(there)), "eski");
            QCOMPARE(b.counter(), counter);
            QCOMPARE(b.fatura(u"a.xml"_s, {u"--uzerine-yaz"_s}), Done);
            QVERIFY(readBytes(b.document(there)).startsWith("<?xml"));
        }
    }

    void rowsAreChosenByAllThatIsSaid_data()
    {
        addTable(uR"(
case              ; options                             ; rows
nothing           ;                                     ; F1 F2 F3 F4
all               ; --sec=hepsi                         ; F1 F2 F3 F4
a day             ; --sec=tarih=07.03.2024              ; F1 F4
today             ; --sec=tarih=bugun                   ; F2
yesterday         ; --sec=tarih=dun                     ; F1 F4
days              ; --sec=tarih=06.03.2024..07.03.2024  ; F1 F3 F4
numbers           ; --sec=no=F2,F4,F9                   ; F2 F4
e-invoices        ; --sec=e-fatura                      ;
the others        ; --sec=e-fatura-degil                ; F1 F2 F3 F4
both              ; --sec=no=F2,F4 --sec=tarih=dun      ; F4
one in both       ; --sec=no=F2,F4 --sec=no=F4,F1       ; F4
days in both      ; --sec=tarih=01.03.2024..07.03.2024 --sec=tarih=dun..bugun ; F1 F4
the screen's days ; --ilk-tarih=07.03.2024 --son-tarih=07.03.2024 ; F1 F4
nothing written   ; --yazilmislari-atla                 ; F1 F2 F3 F4)"_s);
    }
    void rowsAreChosenByAllThatIsSaid()
    {
        Branch b;
        QCOMPARE(b.selected(fetch("options").split(u' ', Qt::SkipEmptyParts)), fetch("rows"));
        QCOMPARE(b.written(), QStringList());
    }

    void whatTheTargetsFolderHoldsIsLeftOut()
    {
        Branch b;
        QCOMPARE(b.fatura(u"a.xml"_s, {u"--sec"_s, u"no=F1,F3"_s}), Done);
        QCOMPARE(b.fatura(u"b.xml"_s, {u"--yazilmislari-atla"_s}), Done);
        QVERIFY(b.says(u"Yazılmış olan 2 satır dışarıda bırakıldı."_s));
        QVERIFY(!readBytes(b.document(u"b.xml"_s)).contains("<NUMBER>F1<"));
        QVERIFY(readBytes(b.document(u"b.xml"_s)).contains("<NUMBER>F4<"));
        QCOMPARE(b.fatura(u"c.xml"_s, {u"--yazilmislari-atla"_s}), NothingWritten);
        QVERIFY(!b.says(u"Uyarı"_s));
        QByteArray other = readBytes(b.source).replace("100.00", "250.00"); // one was corrected
        writeBytes(b.source, other + QByteArray(other).replace("F1", "F7"));
        QCOMPARE(b.fatura(u"c.xml"_s, {u"--yazilmislari-atla"_s}), DoneWithFindings);
        QCOMPARE(b.told.filter(u"Yazılmış sayıldı, dışarıda bırakıldı."_s).size(), 7);
    }

    void aDocumentThatCantBeReadMayHoldEveryRow()
    {
        Branch b;
        if (QSysInfo::kernelType() != u"linux")
            QSKIP("no file that can't be read by anybody");
        QVERIFY(QFile::link(u"/proc/self/mem"_s, b.document(u"a.xml"_s)));
        QCOMPARE(b.fatura(u"b.xml"_s, {u"--yazilmislari-atla"_s}), Barred);
        QVERIFY2(b.says(u"a.xml atlandı"_s) && b.says(u"hiçbir satır seçilmedi"_s),
                 qPrintable(b.told.join(u'\n')));
        QFile::remove(b.document(u"a.xml"_s));
        writeBytes(b.document(u"a.xml"_s), "<html>\r\n</html>\r\n"); // nothing of ours
        writeBytes(b.document(u"e.xml"_s), "");
        QCOMPARE(b.fatura(u"b.xml"_s, {u"--yazilmislari-atla"_s}), Done);
    }

    void listsAreShownInThreeForms()
    {
        Branch b;
        const QString list = u"--listele"_s;
        QCOMPARE(b.fatura({}, {list, u"--sec"_s, u"no=F2"_s}), Done);
        const QStringList table = b.out.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(table.size(), 5);
        QVERIFY(table[2].startsWith(u"x "_s) && table[1].startsWith(u"  "_s));
        QCOMPARE(table[0].indexOf(u"Fatura Numarası"), table[1].indexOf(u"F1"));
        b.fatura({}, {list, u"--bicim"_s, u"csv"_s});
        QVERIFY2(b.out.contains(u"\nx;C1;Deniz Market;F1;"_s), qPrintable(b.out));
        b.run({u"cari"_s, samplePath(u"cariler.txt"_s), list});
        QVERIFY(b.out.startsWith(u"Cari Kodu"_s)); // nothing is ticked there
        QCOMPARE(b.run({u"cari"_s, u"yok.txt"_s, list}), NothingWritten);
    }

    void theNearerWordDecidesTheFormOfAList_data()
    {
        addTable(uR"(
case                 ; recipe                    ; options             ; form
nothing              ;                           ;                     ; table
json                 ;                           ; --json              ; json
json in words        ;                           ; --json --bicim=json ; json
a recipe's json      ; json = evet               ;                     ; json
but not now          ; json = evet               ; --json=hayir        ; table
a recipe's form      ; json = evet, bicim = csv  ;                     ; csv
another form now     ; json = evet               ; --bicim=csv         ; csv
json now             ; bicim = csv               ; --json              ; json)"_s);
    }
    void theNearerWordDecidesTheFormOfAList()
    {
        Branch b;
        const QStringList options = fetch("options").split(u' ', Qt::SkipEmptyParts);
        const QString recipe = b.recipe(fetch("recipe").replace(u',', u'\n').toUtf8());
        QCOMPARE(b.fatura({}, QStringList{u"--listele"_s, u"--tarif"_s, recipe} + options), Done);
        const QString form = b.out.startsWith(u'{')         ? u"json"_s
                             : b.out.startsWith(u"Seçili;") ? u"csv"_s
                                                            : u"table"_s;
        QCOMPARE(form, fetch("form"));
    }

    void findingsAreGivenWithoutWriting()
    {
        Branch b;
        const auto before = filesOf(b.folder, {u"*"_s});
        QCOMPARE(b.fatura({}, {u"--denetle"_s}), Done);
        QCOMPARE(b.out, QString());
        b.write({u"F1"_s, u"F2"_s, u"F2"_s});
        QCOMPARE(b.fatura({}, {u"--denetle"_s}), DoneWithFindings);
        QVERIFY2(b.out.contains(u"Hata: 3. satır: "_s), qPrintable(b.out));
        QCOMPARE(b.fatura({}, {u"--denetle"_s, u"--sec"_s, u"no=F1"_s}), Done); // of other rows
        QCOMPARE(b.fatura(u"a.xml"_s, {u"--hata-varsa-yazma"_s}), NothingWritten);
        QCOMPARE(filesOf(b.folder, {u"*"_s}), before);
        QCOMPARE(b.written(), QStringList());
        QCOMPARE(b.fatura(u"a.xml"_s), DoneWithFindings);

        const QStringList sheet{u"duzey"_s, samplePath() + u"/denetim-duzey-fatura.xlsx"_s,
                                u"--denetle"_s};
        b.run(sheet);
        const auto missing = b.out.count(u"Eksik: "_s);
        QVERIFY2(missing > 0, qPrintable(b.out));
        b.run(sheet + QStringList{u"--json"_s});
        const QJsonObject told = QJsonDocument::fromJson(b.out.toUtf8()).object();
        QCOMPARE(told[u"eksikler"].toArray().size(), missing);
        QVERIFY(!told[u"eksikler"][0][u"kod"].toString().isEmpty());
    }

    void nothingIsNotInOrder_data()
    {
        addTable(uR"(
case      ; arguments                    ; told
no file   ; cari yok.txt                 ; bir adım başarısız oldu
no book   ; duzey bozuk.xlsx             ; bir adım başarısız oldu
no record ; fatura bozuk.xlsx            ; listede kayıt yok
no row    ; fatura gün.bif --sec=no=F9   ; seçilen satır yok)"_s);
    }
    void nothingIsNotInOrder()
    {
        for (const QString &look : {u"--listele"_s, u"--denetle"_s}) {
            Branch b;
            writeBytes(b.place.filePath(u"bozuk.xlsx"_s), "PK");
            QStringList arguments = fetch("arguments").split(u' ');
            arguments[1] = b.place.filePath(arguments[1]);
            QCOMPARE(b.run(arguments << look), NothingWritten);
            QVERIFY2(b.says(fetch("told")), qPrintable(b.told.join(u'\n')));
        }
    }

    void aNumberThatNoRowHasIsAFinding()
    {
        Branch b;
        QCOMPARE(b.fatura({}, {u"--listele"_s, u"--sec"_s, u"no=F1,F8"_s}), DoneWithFindings);
        QVERIFY(b.says(u"Uyarı: Listede olmayan numara: F8"_s));
        QCOMPARE(b.fatura(u"a.xml"_s, {u"--sec"_s, u"no=F1,F9"_s}), DoneWithFindings);
        QVERIFY(b.says(u"Listede olmayan numara: F9"_s) && !b.says(u"F1,"_s));
        QCOMPARE(b.written().size(), 2);
    }

    void findingsAreThoseOfTheDocument()
    {
        const auto rules = [](SampleFolder &folder, const QStringList &arguments) {
            folder.run(arguments + QStringList{u"--denetle"_s, u"--json"_s});
            QStringList names;
            const QJsonObject object = QJsonDocument::fromJson(folder.out.toUtf8()).object();
            for (const auto finding : object[u"bulgular"].toArray())
                names << finding[u"kural"].toString();
            return names;
        };
        Branch b;
        const QStringList slips{u"nakit"_s, samplePath(u"tahsilatlar.xlsx"_s),
                                u"--banka-hesabi="_s};
        const QString noBank = u"boş banka kodu"_s;
        QVERIFY(!rules(b, slips).contains(noBank));
        QVERIFY(rules(b, slips + QStringList{u"--belge=banka"_s}).contains(noBank));
        writeBytes(b.sideFile(u"kasa.kvz"_s), "");
        writeBytes(b.source,
                   header({.no = u"K1"_s, .person = u"00100101"_s}) +
                       header({.no = u"B1"_s, .grand = u"9000.00"_s, .person = u"00100101"_s}));
        const auto ofInvoice = [&](const QString &number) {
            return rules(b, {u"fatura"_s, b.source, u"--sec=no="_s + number});
        };
        QVERIFY(ofInvoice(u"K1"_s).contains(u"kasa kodu"_s));
        QVERIFY(!ofInvoice(u"B1"_s).contains(u"kasa kodu"_s));          // gets no slip
        b.fill(u"update yol set xc='x', xf='/yok/yok' where id='1'"_s); // where the windows'
                                                                        // dialogs begin
        QVERIFY(!ofInvoice(u"K1"_s).contains(u"belge klasörü"_s));
    }

    void whatTheDocumentsTellIsAFinding()
    {
        Branch b;
        const QByteArray counter = b.counter();
        QCOMPARE(b.fatura(u"a.xml"_s), Done);
        writeBytes(b.sideFile(u"kasacariislemno.kvz"_s), counter); // put back from a backup
        QCOMPARE(b.fatura(u"b.xml"_s, {u"--denetle"_s}), DoneWithFindings);
        QVERIFY2(b.out.contains(u"Hata: Sayaç geride: sıradaki numara KN000042"_s),
                 qPrintable(b.out));
        QCOMPARE(b.fatura(u"b.xml"_s, {u"--hata-varsa-yazma"_s}), NothingWritten);
        // A document of which Logo can't read a word is found out before it is published.
        writeBytes(b.source, header({.no = u"F1"_s, .title = u"A & B"_s, .person = u"00100101"_s}) +
                                 goods(u"KHV-100", u"1", u"100.00", u"100.00"));
        QCOMPARE(b.fatura(u"c.xml"_s, {u"--json"_s}), DoneWithFindings);
        QVERIFY(b.out.contains(u"\"kural\":\"geri okuma\""_s));
    }

    void anAutomaticSaveGoesWhereTheSettingsSay()
    {
        Branch b;
        const auto automatic = [&](const QStringList &more = {}) {
            return b.run(QStringList{u"fatura"_s, b.source, u"--firma=MERKEZ ŞUBE"_s, u"--kdv=18"_s,
                                     u"--plan=30GUN"_s, u"--otomatik"_s} +
                         more);
        };
        QCOMPARE(automatic(), NothingWritten);
        QVERIFY(b.says(u"Dikkat: Birim Seti Seçiniz...!"_s));
        const QString unit = u"--birim-seti=PAKET"_s;
        b.fill(u"update yol set xf='' where id='1'"_s);
        QCOMPARE(automatic({unit}), NothingWritten);
        QVERIFY(b.says(u"Dosya Konumu Hatalı...!"_s));
        b.fill(u"update yol set xf='%1' where id='1'"_s.arg(b.documents));
        QCOMPARE(automatic({unit, u"--uzerine-yaz"_s}), NothingWritten);
        QVERIFY(b.says(u"bir klasör"_s) && !isPending(b.folder));
        b.fill(u"update yol set xf='%1' where id='1'"_s.arg(b.document(u"oto.xml"_s)));
        QCOMPARE(automatic({unit}), Done);
        QCOMPARE(b.written(), QStringList({u"oto-KASANAKIT.xml"_s, u"oto.xml"_s}));
        QCOMPARE(automatic({unit}), NothingWritten); // there is one already
        for (const QString &tooShort : {b.document(u"a"_s), b.document(u"xml"_s), u"a"_s, u"/"_s}) {
            b.fill(u"update yol set xf='%1' where id='1'"_s.arg(tooShort));
            QCOMPARE(automatic({unit}), UsedWrongly); // the slips' name is made of it
            QVERIFY2(b.says(u"bir belge adı olamayacak kadar kısa"_s) && b.told.size() == 1,
                     qPrintable(b.told.join(u'\n')));
        }
    }

    void eachDocumentIsAnObject()
    {
        Branch b;
        b.fatura(u"a.xml"_s, {u"--json"_s});
        const QStringList lines = b.out.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        const QJsonObject invoices = QJsonDocument::fromJson(lines[0].toUtf8()).object();
        QCOMPARE(invoices[u"dosya"].toString(), b.document(u"a.xml"_s));
        QCOMPARE(invoices[u"tur"].toString(), u"fatura"_s);
        QCOMPARE(invoices[u"adet"].toInt(), 4);
        QCOMPARE(invoices[u"durum"].toInt(), 0);
        QCOMPARE(invoices[u"bulgular"].toArray().size(), 0);
        const QJsonObject counters = invoices[u"sayaclar"].toObject();
        QCOMPARE(counters[u"once"][u"kasa"].toString(), u"41"_s);
        QCOMPARE(counters[u"sonra"][u"kasa"].toString(), u"45"_s);
        const QJsonObject slips = QJsonDocument::fromJson(lines[1].toUtf8()).object();
        QCOMPARE(slips[u"tur"].toString(), u"kasa fişi"_s);
        QCOMPARE(slips[u"toplam"].toString(), u"400,00"_s); // four times 100
        b.fatura(u"a.xml"_s, {u"--json"_s});
        const QJsonObject none = QJsonDocument::fromJson(b.out.toUtf8()).object();
        QVERIFY(!none.contains(u"dosya"_s));
        QCOMPARE(none[u"durum"].toInt(), 2);
    }

    void severalSourcesGoIntoAFolderOneByOne()
    {
        Branch b;
        QFile::copy(b.source, b.place.filePath(u"ertesi.bif"_s));
        const auto setTime = [&b](const QString &name, QTime time) {
            QFile file(b.place.filePath(name));
            return file.open(QIODevice::ReadWrite) &&
                   file.setFileTime(QDateTime({2024, 3, 7}, time), QFile::FileModificationTime);
        };
        QVERIFY(setTime(u"ertesi.bif"_s, {8, 1}) && setTime(u"gün.bif"_s, {8, 0}));
        QCOMPARE(b.run({u"fatura"_s, b.place.filePath(u"*.bif"_s), u"--hedef"_s,
                        b.document(u"{kaynak}-{tarih}"_s), u"--firma"_s, u"MERKEZ ŞUBE"_s,
                        u"--sec"_s, u"no=F1"_s}),
                 DoneWithFindings);
        QCOMPARE(b.written(),
                 QStringList({u"ertesi-20240308-KASANAKIT.xml"_s, u"ertesi-20240308.xml"_s,
                              u"gün-20240308-KASANAKIT.xml"_s, u"gün-20240308.xml"_s}));
        QVERIFY(readBytes(b.document(u"ertesi-20240308-KASANAKIT.xml"_s)).contains("KN000046"));

        const QStringList nightly{u"cari"_s, u"--hedef"_s, b.document(u"gece/"_s)};
        QDir().mkpath(b.document(u"gece"_s));
        const QString pattern = b.place.filePath(u"*.txt"_s);
        QCOMPARE(b.run(nightly + QStringList{pattern}), NothingWritten);
        QCOMPARE(b.told, QStringList{u"kervan-aktar: %1 desenine uyan dosya yok."_s.arg(pattern)});
        QCOMPARE(b.run({u"fatura"_s, u"--otomatik"_s, pattern}), NothingWritten);
        for (const QString &name : {u"3.txt"_s, u"1.txt"_s, u"2.txt"_s}) {
            writeBytes(b.place.filePath(name), "CR00000001MARKET\r\n");
            QVERIFY(setTime(name, {8, 0}));
        }
        b.run(nightly + QStringList{pattern});
        QVERIFY2(b.out.indexOf(u"1.xml"_s) < b.out.indexOf(u"2.xml"_s) &&
                     b.out.indexOf(u"2.xml"_s) < b.out.indexOf(u"3.xml"_s),
                 qPrintable(b.out));
    }

    void aRecipeGivesWhatTheCommandLineLeavesOpen()
    {
        Branch b;
        const QByteArray recipe = "; her gece\n"
                                  "plan = 30GUN\n"
                                  "belge = guncelle\n" // of others
                                  "[cari]\n"
                                  "olmayan = 1\n"
                                  "[fatura]\n"
                                  "kdv = 8\n"
                                  "firma = \"\xC4\xB0ZM\xC4\xB0R \xC5\x9EUBE\"\n"
                                  "uzerine-yaz = evet\n";
        const QStringList arguments{u"fatura"_s, b.source, u"--hedef"_s, b.document(u"a.xml"_s),
                                    u"--kdv"_s,  u"18"_s,  u"--tarif"_s, b.recipe(recipe)};
        QCOMPARE(b.run(arguments), Done);
        const QByteArray given = readBytes(b.document(u"a.xml"_s));
        QVERIFY(given.contains("<PAYMENT_CODE>30GUN<") && given.contains("600.01.018"));
        QVERIFY(given.contains("120.02"));
        QCOMPARE(b.run(arguments), Done); // over the one that is there
        QByteArray turkish = recipe;
        turkish.replace("\xC4\xB0ZM\xC4\xB0R \xC5\x9EUBE", "\xDDZM\xDDR \xDEUBE");
        b.recipe(turkish);
        QCOMPARE(b.run(arguments), Done);
        b.recipe(recipe + "listele = evet\n");
        QCOMPARE(b.run(arguments), Done);
        QVERIFY(b.out.contains(u"Fatura Numarası"_s));
        for (const QString &no : {u"hayir"_s, u"hayır"_s}) {
            QCOMPARE(b.run(arguments + QStringList{u"--listele="_s + no}), Done);
            QVERIFY(b.out.contains(u"a.xml: 4 fatura"_s));
        }
        for (const auto &[bytes, told] :
             {std::pair<QByteArray, QString>{"[fatura]\nfirmam=X\n",
                                             u"2. satır: \"firmam\" fatura"_s},
              {"[faturalar]\n", u"1. satır: \"faturalar\" bir komut değil"_s},
              {"\nfirma MERKEZ\n", u"2. satır: \"anahtar = değer\" olmalı"_s},
              {"kdv = 8\nkdv = 1\n", u"2. satır: \"kdv\" iki kez verildi"_s},
              {"bicim = pdf\n", u"--bicim için \"pdf\" olmaz"_s}}) {
            b.recipe(bytes);
            QCOMPARE(b.run(arguments), UsedWrongly);
            QVERIFY2(b.says(told), qPrintable(b.told.join(u'\n')));
        }
    }

    void aQuestionIsAnsweredByWhatWasSaidBefore()
    {
        QStringList lines;
        for (const bool yes : {false, true}) {
            LineBoxes boxes(yes);
            boxes.setTell([&](const QString &line) { lines << line; });
            QCOMPARE(boxes.ask({u"Silinsin mi?\r\nEmin misiniz?"_s, u"DİKKAT"_s, Icon::Question}),
                     yes);
        }
        QCOMPARE(lines[0], u"DİKKAT: Silinsin mi? Emin misiniz? Hayır (evet demek için --evet)"_s);
    }

    void windowAndCommandDontMeetInAFolder()
    {
        Branch b;
        FolderLock window(b.folder, FolderLock::Who::Window);
        QVERIFY(window.take());
        QCOMPARE(b.fatura(u"a.xml"_s), InUse);
        QVERIFY(b.says(u"kullanımda"_s) && b.says(u"kervan-pencere-"_s));
        QCOMPARE(b.fatura({}, {u"--listele"_s}), Done); // reading keeps nobody out
        QCOMPARE(b.written(), QStringList());
        auto waiting = std::async(std::launch::async, [&window] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            window.release();
        });
        QCOMPARE(b.fatura(u"a.xml"_s, {u"--bekle"_s, u"60"_s}), Done);
        waiting.get();
        FolderLock command(b.folder, FolderLock::Who::Command);
        QVERIFY(command.take());
        QVERIFY(!window.take());
        QCOMPARE(b.fatura(u"b.xml"_s), InUse); // a second command
        command.release();
        QVERIFY(window.take());
        window.release();
        // What killed ones left behind holds nobody back.
        const QByteArray dead = "99999999\nkervan\n" + QSysInfo::machineHostName().toUtf8() + '\n';
        writeBytes(b.sideFile(u"kervan-aktar.kilit"_s), dead);
        writeBytes(b.sideFile(u"kervan-pencere-x.kilit"_s), dead);
        QCOMPARE(b.fatura(u"b.xml"_s), Done);
    }

    void aKilledTransferIsTakenBackOrBroughtToItsEnd()
    {
        Branch b;
        const QByteArray counter = b.counter();
        { // killed behind the documents and their counters
            const Journal journal(b.folder, b.documents);
            writeBytes(journal.folder() + u"/a.xml"_s, "yarım");
            writeBytes(b.sideFile(u"kasacariislemno.kvz"_s), " 99 \r\n");
            writeBytes(b.sideFile(u"bankacariislemno.kvz"_s), "5\r\n");
        }
        QVERIFY(isPending(b.folder));
        QCOMPARE(b.fatura(u"z.xml"_s, {u"--sec"_s, u"no=F9"_s}), NothingWritten);
        QVERIFY(b.says(u"geri alındı"_s));
        QCOMPARE(b.counter(), counter);
        QVERIFY(!QFile::exists(b.sideFile(u"bankacariislemno.kvz"_s)));
        QCOMPARE(
            QDir(b.documents).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList());
        { // killed in the midst of moving: the second has no place yet
            Journal journal(b.folder, b.documents);
            writeBytes(journal.folder() + u"/a.xml"_s, "a");
            writeBytes(journal.folder() + u"/b.xml"_s, "b");
            writeBytes(b.sideFile(u"kasacariislemno.kvz"_s), " 99 \r\n");
            const QString away = b.document(u"uzak/b.xml"_s);
            QVERIFY(passOver([&] {
                journal.commit({{journal.folder() + u"/a.xml"_s, b.document(u"a.xml"_s)},
                                {journal.folder() + u"/b.xml"_s, away}});
            }));
        }
        QCOMPARE(b.fatura(u"c.xml"_s), NothingWritten); // nor does a new one begin
        QVERIFY(b.says(u"tamamlanamadı"_s) && b.says(u"b.xml"_s));
        QFile::remove(b.document(u"a.xml"_s)); // somebody took it along meanwhile
        QDir().mkpath(b.document(u"uzak"_s));
        QCOMPARE(b.fatura(u"z.xml"_s, {u"--sec"_s, u"no=F9"_s}), NothingWritten);
        QCOMPARE(readBytes(b.document(u"uzak/b.xml"_s)), "b");
        const QString told = b.told.filter(u"tamamlandı"_s).value(0);
        QVERIFY2(told.contains(u"b.xml. Yerinde yok"_s) && told.endsWith(u"a.xml."),
                 qPrintable(told));
        QVERIFY(!QFile::exists(b.document(u"a.xml"_s))); // once is enough
        QCOMPARE(b.counter(), " 99 \r\n");
        QVERIFY(!isPending(b.folder));
    }

    void whatIsTakenAwayBeforeItsPlaceTakesTheCountersBack()
    {
        Branch b;
        const QByteArray counter = b.counter();
        Journal journal(b.folder, b.documents);
        writeBytes(b.sideFile(u"kasacariislemno.kvz"_s), " 99 \r\n");
        const QString staged = journal.folder() + u"/a.xml"_s; // a scanner has put it away
        QVERIFY(failsNaming(staged, [&] { journal.commit({{staged, b.document(u"a.xml"_s)}}); }));
        QCOMPARE(b.counter(), counter);
        QVERIFY(!isPending(b.folder));
    }

    void whatAKillLeftCopiedButNotTakenAwayIsNoObstacle()
    {
        const QByteArray whole = "<a>bütün</a>";
        for (const QByteArray &there : {whole, whole.first(4)}) {
            Branch b;
            const QString to = b.document(u"uzak/a.xml"_s);
            Journal journal(b.folder, b.documents);
            const QString staged = journal.folder() + u"/a.xml"_s;
            writeBytes(staged, whole);
            QVERIFY(passOver([&] { journal.commit({{staged, to}}); })); // there is no such folder
            QDir().mkpath(b.document(u"uzak"_s));
            writeBytes(to, there);
            const bool isOurs = there == whole;
            QCOMPARE(passOver([&] { recover(b.folder); }).has_value(), !isOurs);
            QCOMPARE(readBytes(to), there);
        }
    }

    void aJournalThatCantBeReadIsNoneThatIsDone()
    {
        Branch b;
        writeBytes(b.sideFile(journalName.toString()), "{");
        QCOMPARE(b.fatura(u"a.xml"_s), NothingWritten);
        QVERIFY(b.says(u"kervan-aktar.islem bozuk"_s));
        QVERIFY(!recoverForWindow(b.folder).mayOpen && isPending(b.folder));
        QCOMPARE(b.written(), QStringList());
    }

    // Numbers would begin anew, and taking back would delete it.
    void withACounterThatCantBeReadNothingIsWritten()
    {
        Branch b;
        const QString counter = b.sideFile(u"kasacariislemno.kvz"_s);
        QFile::remove(counter);
        QDir().mkpath(counter + u"/dolu"_s);
        QCOMPARE(b.fatura(u"a.xml"_s), Barred);
        QVERIFY(b.says(u"Belge yazılmadı: "_s) && b.says(u"kasacariislemno.kvz okunamadı"_s));
        QCOMPARE(b.fatura({}, {u"--denetle"_s}), Barred);
        QVERIFY(QFile::exists(counter) && b.written().isEmpty() && !isPending(b.folder));
        Watched w; // no fault of its file
        w.drop(u"bir.bif"_s);
        QFile::rename(w.b.sideFile(u"kasacariislemno.kvz"_s), w.b.sideFile(u"sayac"_s));
        QDir().mkpath(w.b.sideFile(u"kasacariislemno.kvz"_s));
        QCOMPARE(w.watch(), Barred);
        QCOMPARE(w.files(u"isleniyor"_s), u"bir.bif"_s);
        QVERIFY(QDir().rmdir(w.b.sideFile(u"kasacariislemno.kvz"_s)));
        QFile::rename(w.b.sideFile(u"sayac"_s), w.b.sideFile(u"kasacariislemno.kvz"_s));
        QCOMPARE(w.watch(), Done);
    }

    // A transfer that is not yet at its end moves a file by its name.
    void aFileIsNotTakenForOneOfTheSameNameThatIsDone()
    {
        Watched w;
        QDir().mkpath(w.in(u"aktarilan"_s));
        {
            Journal journal(w.b.folder, w.b.documents);
            writeBytes(journal.folder() + u"/b.xml"_s, "b");
            writeBytes(w.in(u"isleniyor/bir.bif"_s), "F1");
            QVERIFY(passOver([&] {
                journal.commit({{w.in(u"isleniyor/bir.bif"_s), w.in(u"aktarilan/bir.bif"_s)},
                                {journal.folder() + u"/b.xml"_s, w.b.document(u"yok/b.xml"_s)}});
            }));
        }
        QDir().mkpath(w.b.document(u"yok"_s));
        QFile::remove(w.in(u"aktarilan/bir.bif"_s)); // fetched
        w.drop(u"bir.bif"_s);
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt"_s);
        QCOMPARE(w.b.written(), QStringList({u"bir-KASANAKIT.xml"_s, u"bir.xml"_s}));
    }

    // The window tells it and goes on, since somebody looks on there.
    void aCounterThatCantBeStoredTakesTheDocumentsBack()
    {
        Branch b;
        QFile::remove(b.sideFile(u"kasacariislemno.kvz"_s));
        if (QSysInfo::kernelType() != u"linux")
            QSKIP("no file that can be read and not replaced");
        QVERIFY(QFile::link(u"/proc/version"_s, b.sideFile(u"kasacariislemno.kvz"_s)));
        const int status = b.fatura(u"a.xml"_s);
        QVERIFY(status == NothingWritten || status == Barred); // by the rights of who tests
        QCOMPARE(b.written(), QStringList());
        QVERIFY(!isPending(b.folder));
        QVERIFY(b.says(u"Belge yazılmadı, sayaçlar önceki gibi"_s));
    }

    void ofDocumentsThatBelongTogetherAllAreThereOrNone()
    {
        Branch b;
        const QByteArray counter = b.counter();
        const QString name(245, u'a'); // the name of the slips' is too long
        QCOMPARE(b.fatura(name + u".xml"_s), NothingWritten);
        QCOMPARE(b.written(), QStringList());
        QCOMPARE(b.counter(), counter);
        QVERIFY(!isPending(b.folder));
    }

    void ofTwoFoldersOneHasTheTarget()
    {
        Branch first;
        Branch second;
        const QByteArray counter = second.counter();
        const QString target = first.document(u"a.xml"_s);
        Journal journal(second.folder, first.documents);
        writeBytes(journal.folder() + u"/a.xml"_s, "ikinci");
        writeBytes(second.sideFile(u"kasacariislemno.kvz"_s), " 99 \r\n");
        QCOMPARE(first.fatura(u"a.xml"_s), Done); // meanwhile
        QVERIFY(passOver([&] { journal.commit({{journal.folder() + u"/a.xml"_s, target}}); }));
        QVERIFY(readBytes(target).startsWith("<?xml"));
        QCOMPARE(second.counter(), counter);
        QVERIFY(!isPending(second.folder));
    }

    // It would put the counters back once more, behind the backs of those who went on counting.
    void aJournalThatStaysIsNoneThatIsDone()
    {
        Branch b;
        const SmallDisk disk(b.folder);
        if (!disk.isThere())
            QSKIP("no disk of its own can be mounted here");
        {
            const Journal journal(b.folder, b.documents);
        }
        QVERIFY(disk.makeReadOnly());
        const Opening opening = recoverForWindow(b.folder);
        QVERIFY2(!opening.mayOpen && opening.told.contains(u"silinemedi"_s),
                 qPrintable(opening.told));
        QVERIFY(disk.makeReadOnly(false));
        QVERIFY(recoverForWindow(b.folder).mayOpen && !isPending(b.folder));
    }

    void documentsOnAShareThatIsAwayAreNotLost()
    {
        Branch b;
        {
            Journal journal(b.folder, b.documents);
            writeBytes(journal.folder() + u"/a.xml"_s, "a");
            QDir().rename(b.documents, b.documents + u"-uzak"_s);
            QVERIFY(passOver([&] {
                journal.commit({{journal.folder() + u"/a.xml"_s, b.document(u"a.xml"_s)}});
            }));
        }
        QVERIFY(passOver([&] { recover(b.folder); }));
        const Opening opening = recoverForWindow(b.folder);
        QVERIFY(opening.mayOpen && opening.told.contains(u"yerine konamadı"_s));
        QDir().rename(b.documents + u"-uzak"_s, b.documents);
        QVERIFY(recoverForWindow(b.folder).told.contains(u"tamamlandı"_s));
        QCOMPARE(readBytes(b.document(u"a.xml"_s)), "a");
    }

    void aWindowStaysClosedWhileNumbersWouldBeGivenTwice()
    {
        Branch b;
        const QString counter = b.sideFile(u"kasacariislemno.kvz"_s);
        {
            const Journal journal(b.folder, b.documents);
        }
        QFile::remove(counter);
        QDir().mkpath(counter + u"/dolu"_s); // it can't be put back
        const Opening opening = recoverForWindow(b.folder);
        QVERIFY(!opening.mayOpen && opening.told.contains(u"program açılmıyor"_s));
        QVERIFY(isPending(b.folder));
        QDir(counter).removeRecursively();
        QVERIFY(recoverForWindow(b.folder).mayOpen);
        QCOMPARE(readBytes(counter), " 41 \r\n");
    }

    void whatKilledWritersLeftIsSweptAndNothingElse()
    {
        Branch b;
        const QString journal = b.sideFile(journalName.toString());
        for (const QString &name : {u".hJkLmN"_s, u".bak123"_s, u".backup"_s, u"-hJkLmN"_s})
            writeBytes(journal + name, "x");
        QCOMPARE(b.fatura(u"a.xml"_s), Done);
        QCOMPARE(QDir(b.folder).entryList({QFileInfo(journal).fileName() + u'*'}).size(), 3);
        QVERIFY(!QFile::exists(journal + u".hJkLmN"_s));
    }

    void withoutLogoNobodyIsTakenForHavingNoEInvoices()
    {
        Branch b;
        b.sqlServer.opens = false;
        QCOMPARE(b.fatura(u"a.xml"_s, {u"--sec=e-fatura-degil"_s}), Barred);
        QVERIFY2(b.says(u"Logo'dan sorulamadı, hiçbir satır"_s), qPrintable(b.told.join(u'\n')));
        QCOMPARE(b.fatura(u"a.xml"_s), Barred);
        QVERIFY2(b.says(u"Logo yanıt verince"_s), qPrintable(b.told.join(u'\n')));
        QCOMPARE(b.written(), QStringList());
        QCOMPARE(b.fatura(u"a.xml"_s, {u"--logosuz-yaz"_s}), DoneWithFindings);
        const auto count = [&] {
            return b.run({u"sayim"_s, samplePath(u"sayim.txt"_s), u"--hata-varsa-yazma"_s,
                          u"--hedef"_s, b.document(u"sayim.xml"_s)});
        };
        QCOMPARE(count(), Barred);
        writeBytes(b.sideFile(u"sqlbaglan.kvz"_s), "sunucu\r\nben\r\n\r\nLOGO\r\n7\r\n");
        QCOMPARE(b.fatura(u"d.xml"_s), DoneWithFindings); // no password yet, so none to wait for
        QVERIFY(QFile::remove(b.sideFile(u"sqlbaglan.kvz"_s))); // who never had a connection
        QCOMPARE(b.fatura(u"b.xml"_s), DoneWithFindings);
        QCOMPARE(b.fatura(u"c.xml"_s, {u"--sec=e-fatura"_s}), NothingWritten);
        QCOMPARE(count(), NothingWritten);
    }

    // To wait for Logo would not help: such a value is never sent.
    void aCustomerWhoCantBeAskedForIsAFaultOfTheSource()
    {
        Branch b;
        writeBytes(b.source, readBytes(b.source).replace("C1", "C'"));
        QCOMPARE(b.fatura(u"a.xml"_s), NothingWritten);
        QVERIFY2(b.says(u"SQL komutunu bozar"_s), qPrintable(b.told.join(u'\n')));
        QCOMPARE(b.written(), QStringList());
        QCOMPARE(b.fatura(u"a.xml"_s, {u"--logosuz-yaz"_s}), DoneWithFindings);
        const QString settings = b.sideFile(u"sqlbaglan.kvz"_s); // whose firm is of all sources
        writeBytes(settings, "sunucu\r\nben\r\ngizli\r\nLOGO\r\n7 Merkez\r\n");
        QCOMPARE(b.fatura(u"b.xml"_s), Barred);
    }

    void anAnswerThatIsNotWaitedForAtTheEndGivesNoDocument()
    {
        Watched w;
        w.recipe += "logosuz-yaz = evet\n";
        w.drop(u"bir.bif"_s);
        bool isEnding = false;
        w.b.isEnding = [&] {
            return isEnding;
        };
        const auto asked = std::exchange(w.b.sqlServer.answer, [&](const QString &) -> SqlRows {
            isEnding = true;
            throw Failure(u"beklenmedi"_s);
        });
        QCOMPARE(w.watch(), Barred);
        QCOMPARE(w.files(u"isleniyor"_s), u"bir.bif"_s);
        QCOMPARE(w.b.written(), QStringList());
        isEnding = false;
        w.b.sqlServer.answer = asked;
        QCOMPARE(w.watch(), Done);
    }

    void aLogoThatIsAwayIsAskedEverMoreSeldom()
    {
        Watched w;
        w.drop(u"isleniyor/bir.bif"_s);
        int asked = 0;
        w.b.sqlServer.answer = [&](const QString &) -> SqlRows {
            ++asked;
            throw Failure(u"yok"_s);
        };
        QCOMPARE(w.watch(), Barred);
        const int once = std::exchange(asked, 0);
        QVERIFY(once > 0);
        w.recipe += "tek-tur = hayir\n";
        w.pause = u"1"_s;
        QElapsedTimer time;
        time.start();
        w.b.isEnding = [&] {
            return time.elapsed() > 3600;
        };
        w.watch();
        QCOMPARE(asked,
                 2 * once); // at the beginning and two seconds later, but not after one or three
    }

    void aTargetFolderThatIsAwayIsForAnotherTime()
    {
        Watched w;
        const QString away = w.b.documents + u"-uzak"_s;
        w.recipe += "uzerine-yaz = evet\n";
        w.drop(u"bir.bif"_s);
        const QString second = w.b.place.filePath(u"iki.bif"_s);
        QVERIFY(QFile::copy(w.b.source, second));
        QVERIFY(QDir().rename(w.b.documents, away));
        const QStringList both{u"fatura"_s, w.b.source, second, u"--hedef"_s, w.b.documents};
        QCOMPARE(w.b.run(both), Barred);
        QCOMPARE(w.b.run(both + QStringList{u"--listele"_s, u"--sec=yazilmamis"_s}), Barred);
        QVERIFY2(w.b.says(u"ulaşılamıyor"_s), qPrintable(w.b.told.join(u'\n')));
        QCOMPARE(w.watch(), Barred);
        QVERIFY(!QFile::exists(w.b.documents + u".xml"_s));
        QVERIFY(QDir().rename(away, w.b.documents));
        QCOMPARE(w.watch(), Done);
    }

    // The numbers stand in it already: tried anew, it would be there twice.
    void aDocumentThatOnlyLacksItsPlaceIsNotForAnotherTime()
    {
        Watched w;
        w.drop(u"bir.bif"_s);
        const auto asked = std::exchange(w.b.sqlServer.answer, [&](const QString &) -> SqlRows {
            QDir(w.in(u"aktarilan"_s)).removeRecursively();
            return {{u"ACCEPTEINV"_s}, {{u"0"_s}}};
        });
        QCOMPARE(w.watch(), NothingWritten);
        QVERIFY2(w.b.says(u"yerine konamadı"_s), qPrintable(w.b.told.join(u'\n')));
        const QByteArray counter = w.b.counter();
        w.b.sqlServer.answer = asked;
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.b.counter(), counter);
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt"_s);
    }

    // Between the list and the document Logo is asked, which may take minutes.
    void aSourceThatGoesOrGrowsMeanwhileGivesNoDocument()
    {
        Watched w;
        const QByteArray counter = w.b.counter();
        w.drop(u"bir.bif"_s);
        const auto asked = std::exchange(w.b.sqlServer.answer, [&](const QString &) -> SqlRows {
            QFile::remove(w.b.source);
            return {{u"ACCEPTEINV"_s}, {{u"0"_s}}};
        });
        QCOMPARE(w.b.fatura(u"bir.xml"_s), Barred);
        w.b.sqlServer.answer = [&](const QString &) -> SqlRows {
            QFile source(w.in(u"isleniyor/bir.bif"_s));
            if (source.open(QIODevice::Append))
                source.write("\r\n");
            return {{u"ACCEPTEINV"_s}, {{u"0"_s}}};
        };
        QCOMPARE(w.watch(), Barred);
        QVERIFY2(w.b.says(u"okunurken değişti"_s), qPrintable(w.b.told.join(u'\n')));
        QCOMPARE(w.b.written(), QStringList());
        QCOMPARE(w.b.counter(), counter);
        w.b.sqlServer.answer = asked;
        QCOMPARE(w.watch(), Done); // of what it has become
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt"_s);
    }

    // Job engines read along and leave.
    void aReaderWhoLeavesEndsNoTransfer()
    {
#ifndef Q_OS_UNIX
        QSKIP("there is no such signal");
#endif
        Branch b;
        QProcess shell;
        shell.start(u"sh"_s, {u"-c"_s, u"{ sleep 0.3; \"$0\" \"$@\"; } | true"_s,
                              QStringLiteral(PROGRAM), u"cari"_s, samplePath(u"cariler.txt"_s),
                              u"--klasor"_s, b.folder, u"--hedef"_s, b.document(u"a.xml"_s)});
        QVERIFY(shell.waitForFinished(20000));
        QCOMPARE(b.written(), QStringList(u"a.xml"_s));
    }

    void aTargetThatIsGoneIsToldBeforeAnythingChanges()
    {
        Branch b;
        const auto before = filesOf(b.folder, {u"*"_s});
        QCOMPARE(b.fatura(u"yok/a.xml"_s), Barred);
        QVERIFY(b.says(u"Hedef klasöre yazılamıyor"_s));
        QCOMPARE(b.fatura(u"yok"_s), Barred); // a folder, and no document beside it
        QVERIFY(b.says(u".xml ile bitirin"_s));
        QCOMPARE(b.written(), QStringList());
        QCOMPARE(filesOf(b.folder, {u"*"_s}), before);
    }

    void aWatchedFolderTakesEachFileOnce()
    {
        Watched w;
        w.drop(u"bir.bif"_s);
        writeBytes(w.in(u"bozuk.bif"_s), "");
        writeBytes(w.in(u"not.txt"_s), "başka");
        writeBytes(w.in(u"isleniyor/kalan.bif"_s), readBytes(w.b.source)); // of one that was killed
        QCOMPARE(w.watch(), NothingWritten); // one of them gave no document
        QCOMPARE(w.files(u"aktarilan"_s),
                 u"bir.bif bir.bif.rapor.txt kalan.bif kalan.bif.rapor.txt"_s);
        QCOMPARE(w.files(u"hatali"_s), u"bozuk.bif bozuk.bif.rapor.txt"_s);
        QCOMPARE(w.files(u"."_s), u"not.txt"_s);
        QCOMPARE(w.b.written(), QStringList({u"bir-KASANAKIT.xml"_s, u"bir.xml"_s,
                                             u"kalan-KASANAKIT.xml"_s, u"kalan.xml"_s}));
        QVERIFY(readBytes(w.in(u"aktarilan/bir.bif.rapor.txt"_s)).contains("bir.xml: 4 fatura"));
        QVERIFY(readBytes(w.in(u"hatali/bozuk.bif.rapor.txt"_s)).contains("Bulunamadı"));
        w.drop(u"bir.bif"_s); // of the same name: its document is there
        QCOMPARE(w.watch(), NothingWritten);
        QVERIFY(w.files(u"hatali"_s).contains(u"bir.bif"_s));
        QFile::remove(w.b.document(u"bir.xml"_s)); // Logo has taken it
        QFile::remove(w.b.document(u"bir-KASANAKIT.xml"_s));
        w.drop(u"bir.bif"_s);
        QCOMPARE(w.watch(), Done);
        QVERIFY(w.files(u"aktarilan"_s).contains(u"bir-2.bif bir-2.bif.rapor.txt"_s));
        QFile::remove(w.in(u"aktarilan/bir.bif"_s)); // and its report stays
        QFile::remove(w.b.document(u"bir.xml"_s));
        QFile::remove(w.b.document(u"bir-KASANAKIT.xml"_s));
        w.drop(u"bir.bif"_s);
        QCOMPARE(w.watch(), Done);
        QVERIFY(w.files(u"aktarilan"_s).contains(u"bir-3.bif bir-3.bif.rapor.txt"_s));
        writeBytes(w.in(u"son.bif"_s), "");
        w.recipe += "tek-tur = hayir\n";
        w.b.isEnding = [&w] {
            return w.files(u"hatali"_s).contains(u"son.bif.rapor.txt"_s);
        };
        QCOMPARE(w.watch(), NothingWritten); // at a signal what was done counts
    }

    void aDatabaseThatIsBusyForAWhileIsNoFaultOfTheFileNorOfTheRecipe()
    {
        Watched w;
        w.drop(u"bir.bif"_s);
        w.drop(u"iki.bif"_s);
        const QByteArray counter = w.b.counter();
        {
            OtherProgram backup(w.b.sideFile(u"data.dbs"_s));
            backup.run(u"begin exclusive"_s);
            QCOMPARE(w.watch(), Barred); // and it waits
            QVERIFY2(w.b.says(u"data.dbs"_s) && w.b.says(u"Belge yazılmadı"_s),
                     qPrintable(w.b.told.join(u'\n')));
            QVERIFY(w.b.says(u"bir.bif"_s) != w.b.says(u"iki.bif"_s)); // none overtakes the other
            QCOMPARE(w.files(u"isleniyor"_s), u"bir.bif iki.bif"_s);
            QCOMPARE(w.b.written(), QStringList());
            QCOMPARE(w.b.fatura(u"a.xml"_s), Barred);
            QCOMPARE(w.b.fatura({}, {u"--denetle"_s}), Barred);
            QCOMPARE(w.b.out, QString()); // no findings of what could not be asked for
            QCOMPARE(w.b.counter(), counter);
        }
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt iki.bif iki.bif.rapor.txt"_s);
    }

    // What is passed over in a window, whose user sees the empty list, counts too.
    void noDocumentIsWrittenWithoutWhatABusyDatabaseHolds_data()
    {
        addTable(uR"(
case            ; database      ; options
invoice codes   ; fatozkod.dbs  ; fatura gün.bif --firma=MERKEZ@ŞUBE --kdv=18 --plan=30GUN
nothing chosen  ; data.dbs      ; fatura gün.bif
stock codes     ; stokozkod.dbs ; stok stoklar.txt
one stock code  ; stokozkod.dbs ; stok stoklar.txt --ozel-kod2=ICECEK)"_s);
    }
    void noDocumentIsWrittenWithoutWhatABusyDatabaseHolds()
    {
        Branch b;
        QFile::copy(samplePath(u"stoklar.txt"_s), b.place.filePath(u"stoklar.txt"_s));
        const auto before = filesOf(b.folder, {u"*.kvz"_s});
        QStringList arguments = fetch("options").replace(u'@', u' ').split(u" --"_s);
        const QString command = arguments.takeFirst();
        for (QString &option : arguments)
            option.prepend(u"--"_s);
        arguments =
            QStringList{command.section(u' ', 0, 0), b.place.filePath(command.section(u' ', 1)),
                        u"--hedef"_s, b.document(u"a.xml"_s)} +
            arguments;
        {
            OtherProgram backup(b.sideFile(fetch("database")));
            backup.run(u"begin exclusive"_s);
            QCOMPARE(b.run(arguments), Barred);
            QVERIFY(b.says(fetch("database") + u" başka bir programda açık"_s));
            QCOMPARE(b.written(), QStringList());
            QCOMPARE(filesOf(b.folder, {u"*.kvz"_s}), before);
        }
        b.run(arguments);
        QVERIFY2(!b.says(u"başka bir programda açık"_s), qPrintable(b.told.join(u'\n')));
    }

    void aDatabaseThatCantBeReadIsNotWaitedFor()
    {
        Watched w;
        w.drop(u"bir.bif"_s);
        const QString database = w.b.sideFile(u"data.dbs"_s);
        const QByteArray whole = readBytes(database);
        writeBytes(database, "bozuk");
        QCOMPARE(w.watch(), NothingWritten);
        QCOMPARE(w.files(u"hatali"_s), u"bir.bif bir.bif.rapor.txt"_s);
        QVERIFY(readBytes(w.in(u"hatali/bir.bif.rapor.txt"_s)).contains("bir veritabanı değil"));
        writeBytes(database, whole);
        OtherProgram(database).run(u"drop table per"_s);
        QCOMPARE(w.b.fatura(u"a.xml"_s), NothingWritten);
        QVERIFY(w.b.says(u"Hata: Tanımlar okunamadı"_s));
        QCOMPARE(w.b.run({u"nakit"_s, samplePath(u"duzey-nakit.xlsx"_s), u"--hedef"_s,
                          w.b.document(u"n.xml"_s)}),
                 NothingWritten); // without it, slips would have no cash desk
        writeBytes(database, whole);
        OtherProgram(database).run(u"drop table urun"_s);
        QCOMPARE(w.b.fatura(u"b.xml"_s), NothingWritten);
        QVERIFY(w.b.says(u"veritabanında bu tablo yok"_s));
        QCOMPARE(w.b.written(), QStringList());
        writeBytes(database, whole);
        QFile::rename(w.b.source, w.b.place.filePath(u"data.dbs.bif"_s));
        w.b.source = w.b.place.filePath(u"data.dbs.bif"_s);
        QCOMPARE(w.b.fatura(u"b.xml"_s), Done);
        QFile::remove(w.b.source);
        QCOMPARE(w.b.fatura(u"c.xml"_s), NothingWritten); // and not held back by its name
    }

    void aNameLikeAPlaceholderIsAName()
    {
        Watched w;
        const QString name = u"%1-%2.bif"_s;
        w.drop(name);
        QCOMPARE(w.watch(), Done);
        QVERIFY2(w.b.out.contains(u"%1-%2.xml: 4 fatura"_s), qPrintable(w.b.out));
        for (const QString &there : {name, u"%1-%2-2.bif"_s}) { // its document is there
            w.drop(name);
            QCOMPARE(w.watch(), NothingWritten);
            QVERIFY2(w.files(u"hatali"_s).contains(there), qPrintable(w.files(u"hatali"_s)));
        }
    }

    void aWatchedFolderLosesNothingWhereItCantGoOn()
    {
        Watched w;
        w.drop(u"bir.bif"_s);
        w.recipe += "firma = YOK\n";
        QCOMPARE(w.watch(), UsedWrongly);
        QCOMPARE(w.files(u"."_s), u"bir.bif"_s);
        QCOMPARE(w.files(u"isleniyor"_s), QString());
        w.recipe.chop(12);
        const QByteArray recipe = w.recipe;
        w.recipe += "[izle]\nbicim = csv\n"; // there is no list to give a form to
        QCOMPARE(w.watch(), UsedWrongly);
        w.recipe = recipe + "[fatura]\nbicim = csv\n"; // that is for its lists
        FolderLock window(w.b.folder, FolderLock::Who::Window);
        QVERIFY(window.take());
        QCOMPARE(w.watch(), InUse);
        w.recipe += "bekle = 600\ntek-tur = hay\xC4\xB1r\n"; // a signal is heard in between
        w.b.isEnding = [looks = 0]() mutable {
            return ++looks > 6;
        };
        QCOMPARE(w.watch(), Done); // asked to end while it waits for the window
        QCOMPARE(w.b.told, QStringList());
        QCOMPARE(w.b.written(), QStringList());
        window.release();
        w.b.isEnding = [] {
            return false;
        };
        w.recipe = recipe;
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt"_s);
    }

    // Neither is a file told at each look, nor is the watch ended by it.
    void whatCantBePutAwayIsToldOnceAndTriedAgain()
    {
        Watched w;
        for (const QString &folder : {u"hatali"_s, u"aktarilan"_s})
            QDir().mkpath(w.in(folder));
        const auto disk = std::make_unique<SmallDisk>(w.in(u"hatali"_s));
        if (!disk->isThere() || !disk->makeReadOnly())
            QSKIP("no disk of its own can be mounted here");
        writeBytes(w.in(u"bozuk.bif"_s), "");
        QCOMPARE(w.watch(), NothingWritten);
        const QStringList told = w.b.told;
        QCOMPARE(told.filter(u"Yeniden denenecek"_s).size(), 1);
        QCOMPARE(w.files(u"isleniyor"_s), u"bozuk.bif"_s);
        w.recipe += "tek-tur = hayir\n";
        w.b.isEnding = [looks = 0]() mutable {
            return ++looks > 12;
        };
        QCOMPARE(w.watch(), NothingWritten); // at a signal, after many looks
        QCOMPARE(w.b.told, told);
        w.b.isEnding = [looks = 0, &w]() mutable {
            if (++looks == 6)
                QFile::remove(w.in(u"isleniyor/bozuk.bif"_s));
            return looks > 12;
        };
        QCOMPARE(w.watch(), NothingWritten); // though somebody has taken it away
        QVERIFY(disk->makeReadOnly(false));  // there is room for the report, but not for the file
        writeBytes(w.in(u"bozuk.bif"_s), QByteArray(600'000, '\n'));
        w.b.isEnding = [looks = 0]() mutable {
            return ++looks > 12;
        };
        QCOMPARE(w.watch(), NothingWritten);
        QCOMPARE(w.files(u"hatali"_s), QString());
        QCOMPARE(w.b.told.filter(u"Yeniden denenecek"_s).size(), 1);
    }

    void aFullDiskEndsNoWatch()
    {
        Watched w;
        w.drop(u"bir.bif"_s);
        int status = -1;
        if (!onAFullDisk(150, [&] { status = w.watch(); }))
            QSKIP("files grow as they like here");
        QCOMPARE(status, NothingWritten);
        QVERIFY(w.b.says(u"Belge yazılmadı"_s));
        QCOMPARE(w.files(u"isleniyor"_s), u"bir.bif"_s);
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt"_s);
    }

    void aFullDiskIsNoFaultOfTheFile()
    {
        Watched w;
        const SmallDisk disk(w.b.documents);
        if (!disk.isThere())
            QSKIP("no disk of its own can be mounted here");
        const QByteArray counter = w.b.counter();
        w.drop(u"bir.bif"_s);
        for (const int blocks : {0, 2}) { // no document, and but one of the two
            disk.leave(blocks);
            QCOMPARE(w.watch(), Barred);
            QVERIFY2(w.b.says(u"disk dolu"_s), qPrintable(w.b.told.join(u'\n')));
            QCOMPARE(w.files(u"isleniyor"_s), u"bir.bif"_s);
            QCOMPARE(w.b.written(), QStringList(u"ballast"_s));
            QCOMPARE(w.b.counter(), counter);
            disk.empty();
        }
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt"_s);
    }

    void aFolderThatGoesWhileItIsWrittenIsNoFaultOfTheFile()
    {
        const QTemporaryDir place;
        const auto failed = passOver([&] {
            WholeFile file(place.filePath(u"a.xml"_s));
            QDir(place.path()).removeRecursively();
            file.write("x");
            file.commit();
        });
        if (QFileInfo::exists(place.path()))
            QSKIP("no folder with an open file can go here");
        QVERIFY(failed && failed->isOfPlace());
        const auto unusable = passOver([] { WholeFile(QString(300, u'a')).commit(); });
        QVERIFY(unusable && !unusable->isOfPlace());
    }

    void sourceAndReportGoToAnotherDiskToo()
    {
        Watched w;
        QDir().mkpath(w.in(u"aktarilan"_s));
        const SmallDisk disk(w.in(u"aktarilan"_s));
        if (!disk.isThere())
            QSKIP("no disk of its own can be mounted here");
        w.drop(u"bir.bif"_s);
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.files(u"aktarilan"_s), u"bir.bif bir.bif.rapor.txt"_s);
        QCOMPARE(w.files(u"isleniyor"_s), QString());
    }

    void whatIsNotTakenIsTold()
    {
        Watched w;
        w.drop(u"yarin.bif"_s);
        QFile ahead(w.in(u"yarin.bif"_s));
        QVERIFY(ahead.open(QIODevice::ReadWrite));
        QVERIFY(ahead.setFileTime(QDateTime::currentDateTime().addDays(1),
                                  QFileDevice::FileModificationTime));
        ahead.close();
        QCOMPARE(w.watch(), Done);
        QCOMPARE(w.files(u"aktarilan"_s), u"yarin.bif yarin.bif.rapor.txt"_s);
#ifdef Q_OS_UNIX
        w.drop(u"gelen.dat"_s);
        QVERIFY(QFile::link(u"gelen.dat"_s, w.in(u"bag.bif"_s)));
        QVERIFY(QFile::link(w.in(u"yok.dat"_s), w.in(u"kopuk.bif"_s)));
        QFile::copy(w.b.source, w.in(u"dogru.bif"_s));
        std::filesystem::copy_file(w.in(u"gelen.dat"_s).toStdString(),
                                   w.in({}).toStdString() + "\xDDzmir.bif");
        QCOMPARE(w.watch(), NothingWritten);
        QCOMPARE(w.b.told.filter(u"Alınmadı"_s).size(), 3);
        QCOMPARE(w.b.told.filter(u"adı UTF-8 değil"_s).size(), 1);
        QVERIFY(w.files(u"aktarilan"_s).startsWith(u"dogru.bif "_s));
        QCOMPARE(w.files(u"isleniyor"_s), QString());
#endif
    }

    void aFolderThatCantBeWrittenIsTold()
    {
        Watched w;
        const SmallDisk disk(w.in({}));
        if (!disk.isThere())
            QSKIP("no disk of its own can be mounted here");
        for (const QString &folder : {u"isleniyor"_s, u"aktarilan"_s, u"hatali"_s})
            QDir().mkpath(w.in(folder));
        w.drop(u"bir.bif"_s);
        QVERIFY(disk.makeReadOnly());
        QCOMPARE(w.watch(), NothingWritten);
        QVERIFY2(w.b.says(u"kilit dosyası açılamadı"_s), qPrintable(w.b.told.join(u'\n')));
        const SmallDisk ofWork(w.in(u"isleniyor"_s)); // it can be copied, but not taken away
        QCOMPARE(w.watch(), NothingWritten);
        QVERIFY2(w.b.says(u"bir.bif: Alınmadı"_s), qPrintable(w.b.told.join(u'\n')));
        QCOMPARE(w.files(u"isleniyor"_s), QString());
        QCOMPARE(w.b.written(), QStringList());
    }

    // Renamed while its writer goes on with it, the file would be half a day's; a document that is
    // open in Logo keeps nobody from the next one.
    void whatAnotherProgramHasOpenIsLeftAsItIs()
    {
#ifdef Q_OS_WIN
        Watched w;
        w.drop(u"bir.bif"_s);
        {
            const OpenElsewhere sender(w.in(u"bir.bif"_s), FILE_SHARE_READ | FILE_SHARE_WRITE);
            QCOMPARE(w.watch(), NothingWritten);
            QVERIFY(w.b.says(u"bir.bif: Alınmadı, başka bir programda açık"_s));
            QCOMPARE(w.files(u"."_s), u"bir.bif"_s);
            QCOMPARE(w.files(u"isleniyor"_s), QString());
        }
        QCOMPARE(w.watch(), Done);
        const QByteArray counter = w.b.counter();
        const QByteArray document = readBytes(w.b.document(u"bir.xml"_s));
        {
            const OpenElsewhere logo(w.b.document(u"bir.xml"_s), FILE_SHARE_READ);
            QCOMPARE(w.b.fatura(u"bir.xml"_s, {u"--uzerine-yaz"_s}), Barred);
            QVERIFY(w.b.says(u"başka bir programda açık"_s));
        }
        QVERIFY(readBytes(w.b.document(u"bir.xml"_s)) == document && !isPending(w.b.folder));
        {
            const OpenElsewhere backup(w.b.sideFile(u"kasacariislemno.kvz"_s));
            QCOMPARE(w.b.fatura(u"iki.xml"_s), Barred);
        }
        QCOMPARE(w.b.counter(), counter);
        QCOMPARE(w.b.fatura(u"iki.xml"_s), Done);
#else
        QSKIP("open files are nobody's alone here");
#endif
    }

    // Of its report's name, which the system would not take behind the document.
    void aNameTooLongForAReportIsNotTaken()
    {
        Watched w;
        const QString name = QString(246, u'a') + u".bif"_s;
        w.drop(name);
        QCOMPARE(w.watch(), NothingWritten);
        QVERIFY2(w.b.says(u"adı çok uzun"_s), qPrintable(w.b.told.join(u'\n')));
        QCOMPARE(w.files(u"."_s), name);
        QCOMPARE(w.b.written(), QStringList());
    }

    void aTargetInsideTheWatchedFolderIsAWrongUse()
    {
        Watched w;
        w.drop(u"bir.bif"_s);
        w.recipe += "uzerine-yaz = evet\n";
        w.b.documents = w.b.document(u"hep.xml"_s);
        QCOMPARE(w.watch(), UsedWrongly);
        QVERIFY2(w.b.says(u"bir öncekini ezerdi"_s), qPrintable(w.b.told.join(u'\n')));
#ifdef Q_OS_WIN
        const QString otherName = w.in(u"A.XML"_s).toUpper();
#else
        QVERIFY(QFile::link(w.in({}), w.b.place.filePath(u"bag"_s)));
        const QString otherName = w.b.place.filePath(u"bag/a.xml"_s);
#endif
        for (const QString &target :
             {w.in({}), w.in(u"aktarilan"_s), w.in(u"hatali/a.xml"_s), otherName,
              w.in(u"../gelen/{kaynak}.xml"_s), w.in(u"yeni/{tarih}/"_s)}) {
            w.b.documents = target;
            QCOMPARE(w.watch(), UsedWrongly);
            QVERIFY2(w.b.says(u"izlenen klasörün içine yazılamaz"_s), qPrintable(target));
            QCOMPARE(w.files(u"."_s), u"bir.bif"_s);
        }
    }

    void aDocumentIsReplacedByAFileOfItsNameAlone()
    {
        Watched w;
        w.recipe += "uzerine-yaz = evet\ndesen = *.bif *.txt\n";
        w.drop(u"bir.bif"_s);
        QCOMPARE(w.watch(), Done);
        w.drop(u"bir.bif"_s);
        QCOMPARE(w.watch(), Done); // sent again
        w.drop(u"iki.bif"_s);
        w.drop(u"iki.txt"_s);
        QCOMPARE(w.watch(), NothingWritten);
        QVERIFY2(w.b.says(u"Belgesi iki.bif dosyasınınkiyle aynı adı alır"_s),
                 qPrintable(w.b.told.join(u'\n')));
        QCOMPARE(w.files(u"hatali"_s), u"iki.txt iki.txt.rapor.txt"_s);
    }

    void aFileIsTakenOnceItIsComplete()
    {
        Watched w;
        w.pause = u"1"_s;
        w.drop(u"bir.bif"_s);
        auto sender = std::async(std::launch::async, [&w] {
            for (int i = 0; i < 4; ++i) { // goes on for longer than a look
                std::this_thread::sleep_for(std::chrono::milliseconds(500));
                QFile file(w.in(u"bir.bif"_s));
                if (!file.open(QIODevice::Append))
                    return false;
                file.write(header({.no = u"E%1"_s.arg(i)}));
            }
            return true;
        });
        QVERIFY(w.watch() != NothingWritten);
        QVERIFY(sender.get());
        QCOMPARE(readBytes(w.in(u"aktarilan/bir.bif"_s)).count("@5"), 8);
        QCOMPARE(readBytes(w.b.document(u"bir.xml"_s)).count("<NUMBER>E"), 8);
    }

    void aWatchedFolderIsLeftAtASignal()
    {
#ifdef Q_OS_WIN
        QSKIP("a console program is not ended by the test library there");
#endif
        Watched w;
        QProcess program;
        const QStringList arguments{
            u"izle"_s,    w.in({}),      u"--tarif"_s,  w.b.recipe("[izle]\naktarim = cari\n"),
            u"--hedef"_s, w.b.documents, u"--klasor"_s, w.b.folder};
        program.start(QStringLiteral(PROGRAM), arguments);
        QTRY_VERIFY(QFile::exists(w.in(u"isleniyor/.kilit"_s)));
        QCOMPARE(w.watch(), InUse); // there is one already
        QVERIFY2(w.b.says(u"%1 numaralı işlem"_s.arg(program.processId())),
                 qPrintable(w.b.told.join(u'\n')));
        program.terminate();
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), int(Done));
        QVERIFY(!QFile::exists(w.in(u"isleniyor/.kilit"_s)));
        w.b.recipe("[izle]\naktarim = cari\n");
        program.start(QStringLiteral(PROGRAM), arguments);
        QTRY_VERIFY(QFile::exists(w.in(u"isleniyor/.kilit"_s)));
        program.kill(); // leaves its lock behind
        QVERIFY(program.waitForFinished(20000));
        w.drop(u"bir.bif"_s);
        QCOMPARE(w.watch(), Done);
        program.start(QStringLiteral(PROGRAM), {u"--version"_s});
        QVERIFY(program.waitForFinished(20000));
        QVERIFY(program.readAllStandardOutput().startsWith("kervan-aktar "));
    }

private:
    struct Watched
    {
        Branch b;
        QByteArray recipe = "[fatura]\nfirma = MERKEZ \xC5\x9EUBE\nkdv = 18\nplan = 30GUN\n";
        QString pause = u"0"_s;

        Watched() { QDir(b.place.path()).mkpath(u"gelen/isleniyor"_s); }
        QString in(const QString &name) const { return b.place.filePath(u"gelen/"_s + name); }
        void drop(const QString &name) const { writeBytes(in(name), readBytes(b.source)); }
        QString files(const QString &folder) const
        {
            return QDir(in(folder)).entryList(QDir::Files).join(u' ');
        }
        int watch()
        {
            return b.run({u"izle"_s, in({}), u"--tarif"_s,
                          b.recipe("[izle]\naktarim = fatura\ntek-tur = evet\n" + recipe),
                          u"--hedef"_s, b.documents, u"--ara"_s, pause});
        }
    };
};

QTEST_GUILESS_MAIN(AktarTest)
#include "tst_aktar.moc"
