#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

/// The receiving end of work on a thread: a child of the work's owner, on the owner's thread, that
/// goes with the owner or with the last thing that it receives.
///
/// In place of QPromise and QFutureWatcher, which do the same: the thread sanitizer can't follow
/// their locks in a Qt that is not built with it. A Qt that is would end this.
class Delivery : public QObject
{
    Q_OBJECT

public:
    using Task = std::function<void(Delivery &)>;

    /// The way to a delivery from other threads. It may outlive the delivery.
    class Way
    {
    public:
        explicit Way(Delivery *delivery)
            : m_delivery(delivery)
        {
        }

        /// Has a task run on the delivery's thread after all earlier ones; never, once the delivery
        /// has gone.
        void post(Task task);

    private:
        friend Delivery;

        std::mutex m_mutex;
        std::deque<Task> m_tasks; ///< an event for each is on its way
        Delivery *m_delivery;     ///< null once it has gone
    };

    explicit Delivery(QObject *owner);
    ~Delivery() override;
    Q_DISABLE_COPY_MOVE(Delivery)

    [[nodiscard]] const std::shared_ptr<Way> &way() const { return m_way; }

protected:
    void customEvent(QEvent *event) override;

private:
    const std::shared_ptr<Way> m_way;
};

/// One that passes on reports, and then goes. What it calls may destroy it.
template <typename Report>
class ReportDelivery final : public Delivery
{
public:
    ReportDelivery(QObject *owner, std::function<void(const Report &)> receive,
                   std::function<void()> finish)
        : Delivery(owner)
        , m_receive(std::move(receive))
        , m_finish(std::move(finish))
    {
    }

    static void report(Way &way, const Report &report)
    {
        way.post([report](Delivery &delivery) {
            const auto receive = static_cast<ReportDelivery &>(delivery).m_receive;
            receive(report);
        });
    }

    static void finish(Way &way)
    {
        way.post([](Delivery &delivery) {
            const auto finish = static_cast<ReportDelivery &>(delivery).m_finish;
            delivery.deleteLater();
            finish();
        });
    }

private:
    const std::function<void(const Report &)> m_receive;
    const std::function<void()> m_finish;
};
