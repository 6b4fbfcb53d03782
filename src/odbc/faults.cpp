#include "odbc/faults.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

struct Fault
{
    QStringView state; ///< empty: any
    int native;        ///< 0: any
    QStringView told;
};

constexpr QStringView noDriver = u"SQL Server sürücüsü (ODBC) bu bilgisayarda kurulu değil.";
constexpr QStringView unknownName = u"Sunucunun adı ağda bulunamadı.";
constexpr QStringView unreachable =
    u"Sunucuya ulaşılamadı: adı, portu ve SQL Server'ın açık olduğunu denetleyin.";
constexpr QStringView lost = u"SQL Server ile bağlantı koptu.";
constexpr QStringView late = u"SQL Server zamanında yanıt vermedi.";
constexpr QStringView tooLong = u"Değer, Logo'daki alanına sığmıyor.";

// Of several records the one tells most that stands first here. FreeTDS has the numbers from 20000
// on, Windows and Microsoft's drivers those around 10000.
constexpr auto faults = std::to_array<Fault>({
    {{}, 4060, u"Veritabanı açılamadı: adı yanlış ya da bu kullanıcıya kapalı."},
    {{}, 18456, u"Oturum açılamadı: kullanıcı adı ya da şifre yanlış."},
    {u"28000", 0, u"Oturum açılamadı: sunucu bu kullanıcıyı kabul etmedi."},
    {u"IM002", 0, noDriver},
    {u"IM003", 0, noDriver},
    {{}, 20013, unknownName},
    {{}, 11001, unknownName},
    {{}, 10061, u"Sunucu bağlantıyı reddetti: o portta dinleyen bir SQL Server yok."},
    {u"08004", 0, u"SQL Server bağlantıyı reddetti."},
    {{}, 20009, unreachable},
    {{}, 53, unreachable},
    {u"HYT00", 0, late},
    {u"HYT01", 0, late},
    {{}, 20003, late},
    {{}, 20004, lost},
    {{}, 20006, lost},
    {{}, 20017, lost},
    {{}, 10053, lost},
    {{}, 10054, lost},
    {u"08S01", 0, lost},
    {u"08003", 0, lost},
    {u"08007", 0, lost},
    {u"08001", 0, u"SQL Server bağlantısı kurulamadı."},
    {{}, 208, u"Tablo yok: seçilen firma ya da veritabanı başka olabilir."},
    {{}, 229, u"Bu kullanıcının o tabloya yetkisi yok."},
    {{}, 1205, u"Başka bir işlemle çakıştı; yeniden deneyin."},
    {{}, 2628, tooLong},
    {{}, 8152, tooLong},
});

bool is(const Diagnosis &record, const Fault &fault)
{
    return (fault.state.isEmpty() || record.state == fault.state) &&
           (fault.native == 0 || record.native == fault.native);
}

// The driver manager of Linux tells a missing driver as a mere warning.
bool isOfNoDriver(const Diagnosis &record)
{
    return record.state == u"01000" && record.sentence.startsWith(u"Can't open lib");
}

// FreeTDS knows no more when it finds at the sending that the line has been cut.
bool isOfNoWords(const Diagnosis &record)
{
    return record.state == u"HY000" && record.native == 0 && record.sentence == u"Unknown error";
}

} // namespace

QString descriptionOf(const QList<Diagnosis> &records)
{
    QStringList sentences;
    const auto *const fault = std::ranges::find_if(faults, [&](const Fault &each) {
        return std::ranges::any_of(records, [&](const Diagnosis &one) { return is(one, each); });
    });
    if (std::ranges::any_of(records, isOfNoDriver))
        sentences << noDriver.toString();
    else if (fault != faults.end())
        sentences << fault->told.toString();
    else if (std::ranges::any_of(records, isOfNoWords))
        sentences << lost.toString();
    for (const Diagnosis &record : records) {
        if (!record.sentence.isEmpty() && !sentences.contains(record.sentence))
            sentences << record.sentence;
    }
    return sentences.isEmpty() ? u"SQL Server hata verdi, ama nedenini bildirmedi."_s
                               : sentences.join(u'\n');
}

} // namespace kervan
