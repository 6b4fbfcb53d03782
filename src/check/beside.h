#pragma once

#include <QObject>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace kervan {

/// Work on files beside the work of the user. Its thread is left to end alone, since a share that
/// is gone may hold it for long, and uses no QRegularExpression, directory filters or plug-ins.
class Beside : public QObject
{
    Q_OBJECT

public:
    explicit Beside(QObject *parent = nullptr);
    ~Beside() override;

    /// Lets job() run in a thread, then done() with what it gave in this one. What was started
    /// before is dropped: its done() never runs. Nor does it where no thread is to be had. The job
    /// must not touch what may be gone by then.
    template<class Result>
    void start(std::function<Result(const std::atomic_bool &stop)> job,
               std::function<void(Result result)> done)
    {
        run([job = std::move(job), done = std::move(done)](const std::atomic_bool &stop) {
            auto result = std::make_shared<Result>(job(stop));
            return [done, result] {
                done(std::move(*result));
            };
        });
    }
    /// Drops what is running.
    void stop();
    bool isRunning() const { return m_running != nullptr; }

Q_SIGNALS:
    /// Comes out of the thread.
    void ended();

private:
    using Done = std::function<void()>;

    void finish();
    struct Running
    {
        std::mutex mutex;
        Beside *owner;
        std::atomic_bool stop = false;
        bool ended = false;
        Done done;
        std::condition_variable over;
    };
    void run(std::function<Done(const std::atomic_bool &stop)> job);

    std::shared_ptr<Running> m_running;
};

} // namespace kervan
