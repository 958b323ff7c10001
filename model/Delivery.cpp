#include "model/Delivery.h"

#include <QCoreApplication>
#include <QEvent>

Delivery::Delivery(QObject *owner)
    : QObject(owner)
    , m_way(std::make_shared<Way>(this))
{
}

Delivery::~Delivery()
{
    const std::lock_guard lock(m_way->m_mutex);
    m_way->m_delivery = nullptr;
}

void Delivery::Way::post(Task task)
{
    const std::lock_guard lock(m_mutex);
    if (m_delivery != nullptr) {
        m_tasks.push_back(std::move(task));
        QCoreApplication::postEvent(m_delivery, new QEvent(QEvent::User)); // owned by the queue
    }
}

void Delivery::customEvent(QEvent * /*event*/)
{
    const Task task = [this] {
        const std::lock_guard lock(m_way->m_mutex);
        Task next = std::move(m_way->m_tasks.front());
        m_way->m_tasks.pop_front();
        return next;
    }();
    task(*this);
}
