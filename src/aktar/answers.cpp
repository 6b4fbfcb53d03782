#include "aktar/answers.h"

#include "base/failure.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

int unaskedOf(const OpenScreen &screen)
{
    return screen.unasked ? screen.unasked() : 0;
}

// A file of settings that can't be read may come back.
bool isLogoSetUp(const Program &program)
{
    const QString path = program.path(u"sqlbaglan.kvz");
    bool isSetUp = QFileInfo::exists(path);
    passOver([&] { isSetUp = areComplete(readSqlSettings(path)); });
    return isSetUp;
}

} // namespace

bool lacksAnswers(const OpenScreen &screen, const Program &program)
{
    const ScreenLink *link = screen.link;
    return link && (link->isUnanswered() || (unaskedOf(screen) > 0 && !link->isRefused())) &&
           isLogoSetUp(program);
}

std::optional<Lack> lackOf(const OpenScreen &screen, const Program &program, bool mayLack,
                           bool isEnding)
{
    const int unasked = unaskedOf(screen);
    const QString invoices =
        u"%1 faturanın müşterisi Logo'dan sorulamadı, e-fatura müşterisiyse de e-fatura olmadan "
        "yazılırdı. "_s.arg(unasked);
    if (lacksAnswers(screen, program)) {
        if (isEnding)
            return Lack{u"Logo'nun yanıtı beklenmeden durduruldu."_s, false};
        if (unasked == 0)
            return Lack{u"Logo yanıt vermedi. Yanıt verince yeniden deneyin."_s, false};
        if (!mayLack)
            return Lack{invoices + u"Logo yanıt verince yeniden deneyin ya da --logosuz-yaz "
                                   "verin."_s,
                        false};
    } else if (unasked > 0 && !mayLack && screen.link->isRefused()) {
        return Lack{invoices + u"Nedeni yukarıda; kaynağı düzeltin ya da --logosuz-yaz verin."_s,
                    true};
    }
    return std::nullopt;
}

} // namespace kervan
