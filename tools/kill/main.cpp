// Kills the program over and over and looks at what is left: kervan-kill PLACE KILLS. The script
// beside this file lays the place out.

#include "remains.h"
#include "work.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTextStream>
#include <QThread>

#include <array>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

// One program, from its start to its kill.
class Victim
{
public:
    void start(const QString &program, const QStringList &arguments)
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(program, arguments);
        m_process.waitForStarted();
    }
    // Whether it was still alive then.
    bool kill(int microseconds)
    {
        QThread::usleep(static_cast<unsigned long>(microseconds));
        const bool lives = !m_process.waitForFinished(0);
        m_process.kill();
        m_process.waitForFinished();
        return lives;
    }
    bool ends() { return m_process.waitForFinished(60000) && hasDone(); }
    bool hasDone() const
    {
        return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() <= 1;
    }
    void waitForFirstWord() { m_process.waitForReadyRead(20000); }
    // The last number of each word that it told.
    QHash<QString, int> done()
    {
        QHash<QString, int> last;
        for (const QByteArray &line : m_process.readAllStandardOutput().split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (words.size() == 2)
                last[QString::fromLatin1(words[0])] = words[1].toInt();
        }
        return last;
    }

private:
    QProcess m_process;
};

struct Way
{
    Life life;
    QString name;
    int share;        // of a hundred kills
    int milliseconds; // it is killed within
};
const std::array<Way, 4> ways{{{Life::Documents, u"documents of the windows"_s, 45, 150},
                               {Life::Settings, u"definitions, prices, side files"_s, 30, 150},
                               {Life::Command, u"kervan-aktar"_s, 20, 150},
                               {Life::Start, u"starting windows"_s, 5, 600}}};

class Killing
{
public:
    explicit Killing(const QString &place)
        : m_place(place)
        , m_remains(place)
    {
    }

    // Nobody is killed yet: what documents are like, and that a program starts.
    bool learn()
    {
        m_remains.emptyTable();
        Victim documents;
        documents.start(QCoreApplication::applicationFilePath(), {u"belgeler"_s, m_place, u"0"_s});
        QThread::sleep(3);
        documents.kill(0);
        const QHash<QString, int> done = documents.done();
        for (const Kind &kind : kinds()) {
            if (!done.contains(kind.name))
                return false;
            m_remains.learn(kind.name, done[kind.name]);
        }
        Victim command;
        beginCommand(command);
        if (!command.ends())
            return false;
        m_remains.learn(u"komut"_s, m_number); // it came to its end
        return true;
    }

    bool kill(const Way &way)
    {
        Victim victim;
        m_number += 1000;
        switch (way.life) {
        case Life::Documents:
            work(victim, u"belgeler"_s, m_place);
            break;
        case Life::Settings:
            work(victim, u"ayarlar"_s, m_place);
            break;
        case Life::Command:
            beginCommand(victim);
            break;
        case Life::Start:
            victim.start(m_place + u"/program/kervan-transfer"_s, {});
            break;
        }
        const int within = way.milliseconds * 1000;
        const bool lived = victim.kill(QRandomGenerator::global()->bounded(within));
        ++m_kills[way.name];
        if (!lived)
            ++m_over[way.name];
        QHash<QString, int> done = victim.done();
        QStringList wrong;
        if (!lived && (way.life != Life::Command || !victim.hasDone()))
            wrong << u"it ended by itself"_s; // only the command comes to its end
        else if (!lived)
            done[u"komut"_s] = m_number;
        wrong += m_remains.look(way.life, done, m_number);
        for (const QString &what : wrong)
            out() << "WRONG, " << way.name << ": " << what << Qt::endl;
        return wrong.isEmpty();
    }

    // The window comes up and stays.
    bool starts()
    {
        Victim window;
        window.start(m_place + u"/program/kervan-transfer"_s, {});
        const bool lives = window.kill(1'500'000);
        return lives && m_remains.look(Life::Start, {}).isEmpty();
    }

    void tell() const
    {
        for (const Way &way : ways)
            out() << "killed, " << way.name << ": " << m_kills.value(way.name) << ", of them "
                  << m_over.value(way.name) << " over before\n";
        for (const QString &line : m_remains.counts())
            out() << line << '\n';
    }

private:
    void work(Victim &victim, const QString &what, const QString &place)
    {
        victim.start(QCoreApplication::applicationFilePath(),
                     {what, place, QString::number(m_number)});
        victim.waitForFirstWord();
    }
    void beginCommand(Victim &victim)
    {
        victim.start(m_place + u"/program/kervan-aktar"_s,
                     {u"fatura"_s, m_place + u"/kaynak/fatura.bif"_s, u"--firma"_s,
                      u"MERKEZ ŞUBE"_s, u"--kdv"_s, u"18"_s, u"--plan"_s, u"30GUN"_s, u"--hedef"_s,
                      u"%1/belge/komut-%2.xml"_s.arg(m_place).arg(m_number)});
    }

    QString m_place;
    Remains m_remains;
    int m_number = 1000;
    QHash<QString, int> m_kills, m_over;
};

const Way &drawn()
{
    int at = QRandomGenerator::global()->bounded(100);
    for (const Way &way : ways) {
        if (at < way.share)
            return way;
        at -= way.share;
    }
    return ways[0];
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"belgeler")
        writeDocuments(arguments.value(2), arguments.value(3).toInt());
    if (arguments.value(1) == u"ayarlar")
        saveSettings(arguments.value(2), arguments.value(3).toInt());
    if (arguments.size() != 3) {
        out() << "kervan-kill PLACE KILLS\n";
        return 2;
    }
    Killing killing(arguments[1]);
    if (!killing.learn()) {
        out() << "It does not work even when nobody is killed.\n";
        return 1;
    }
    int wrong = 0;
    for (int i = 0; i < arguments[2].toInt(); ++i)
        wrong += killing.kill(drawn()) ? 0 : 1;
    killing.tell();
    const bool starts = killing.starts();
    out() << (starts ? "the window starts\n" : "THE WINDOW DOES NOT START\n") << "wrong behind "
          << wrong << " kills\n";
    return wrong == 0 && starts ? 0 : 1;
}
