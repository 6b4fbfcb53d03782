#include "slips/slipwords.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "check/listrules.h"
#include "slips/slipscreen.h"

namespace kervan {

using namespace Qt::StringLiterals;

QList<const SlipDocument *> documentsOf(const SlipForm &form, bool ofBankList)
{
    QList<const SlipDocument *> documents;
    for (const SlipCommand &command : form.commands) {
        const auto *write = std::get_if<WriteDocument>(&command.action);
        if (!write)
            continue;
        const SlipDocument &document = write->document();
        const bool isReached = command.shown || !document.takesTicked();
        if (isReached && document.ofBankList == ofBankList && document.kind != SlipKind::None)
            documents << &document;
    }
    return documents;
}

bool takesRow(const SlipScreen &screen, const SlipDocument &document, int row)
{
    if (!document.takesTicked())
        return screen.metinden() && document.takes(screen.l1, row);
    return !screen.metinden() &&
           (document.needs == ReadKind::None || document.needs == screen.okunan());
}

namespace {

// Each slip's filling runs over all slips before it, so a word of a step that is through by then
// is found by the next slip. Said as if all rows were written.
class WordsInSlips
{
public:
    WordsInSlips(const SlipScreen &screen, const SlipDocument &document, const Grid &grid)
        : m_screen(screen)
        , m_document(document)
        , m_grid(grid)
    {
    }

    QString faultOf(int row)
    {
        QString fault;
        passOver([&] {
            if (row == 0 || !m_filling)
                prepare();
            if (takes(row))
                fault = faultOfValues(row);
        });
        return fault;
    }

private:
    void prepare()
    {
        m_filling.reset();
        m_source = std::make_shared<SlipSource>(
            SlipSource{m_grid, m_screen.codes(), m_screen.form().salesman});
        m_filling = fillingOf(m_document, *m_source, m_screen.program().clock);
    }
    bool takes(int row) const
    {
        return m_document.ofBankList || takesRow(m_screen, m_document, row);
    }

    QString faultOfValues(int row)
    {
        const QStringList values = m_filling->values(row);
        if (!m_filling->record.mayChange(values, Sablon::Steps::All))
            return {};
        QString fault = faultOfWords(m_filling->record, m_filling->placeholders, values);
        int next = row + 1;
        while (next < m_grid.rows() && !takes(next))
            ++next;
        if (!fault.isEmpty() || next == m_grid.rows())
            return fault;
        QByteArray written;
        m_filling->record.doldur(values, written);
        const QStringList nextValues = m_filling->values(next);
        if (sablondoldur(written, fillsOf(m_filling->placeholders, nextValues)) == written)
            return {};
        for (qsizetype step = 0; step < m_filling->placeholders.size(); ++step) {
            const QByteArray &word = m_filling->placeholders[step];
            for (const QString &value : values) {
                if (toCodePage(value).contains(word))
                    return u"%1 içindeki \"%2\" şablonun sözcüğüdür, bir sonraki fiş yazılırken "
                           "yerine %3 gelir."_s.arg(quoted(value), fromCodePage(word),
                                                    quoted(nextValues[step]));
            }
        }
        return u"Değerlerde şablonun sözcükleri var, belge listedekinden başka olur."_s;
    }

    const SlipScreen &m_screen;
    const SlipDocument &m_document;
    const Grid &m_grid;
    std::shared_ptr<SlipSource> m_source;
    std::optional<Filling> m_filling; // of m_source
};

} // namespace

QList<Rule> wordRules(const SlipScreen &screen, const Grid &grid, bool ofBankList)
{
    QList<Rule> rules;
    for (const SlipDocument *document : documentsOf(screen.form(), ofBankList)) {
        auto words = std::make_shared<WordsInSlips>(screen, *document, grid);
        rules << Rule{.name = u"şablon sözcüğü"_s,
                      .level = Level::Error,
                      .cure = u"Değeri kaynağında değiştirip yeniden okutun."_s,
                      .list = ofBankList ? u"l2"_s : u"l1"_s,
                      .ofRow = [words](int row) {
                          return words->faultOf(row);
                      }};
    }
    return rules;
}

} // namespace kervan
