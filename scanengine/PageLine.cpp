#include "scanengine/PageLine.h"

#include <new>
#include <utility>

namespace scanengine {

PageLine::PageLine(PageFiles &files, Finish finish, Events events)
    : m_files(files), m_finish(std::move(finish)), m_events(std::move(events))
{
}

PageLine::~PageLine()
{
    drain();
}

void PageLine::add(QImage sheet)
{
    {
        std::unique_lock lock(m_mutex);
        m_left.wait(lock, [this] { return m_inside < mostPages; });
        if (m_fault)
            return;
        ++m_inside;
    }
    // The task gives its image away, so that working on it needs no copy.
    auto task = [this, sheet = std::move(sheet)](const std::stop_token &) mutable {
        finishSheet(std::move(sheet));
    };
    if (!m_finishing.add(std::move(task), TaskQueue::Cancelling::ignored))
        leave();
}

std::optional<Fault> PageLine::drain()
{
    std::unique_lock lock(m_mutex);
    m_left.wait(lock, [this] { return m_inside == 0; });
    return m_fault;
}

void PageLine::finishSheet(QImage sheet)
{
    if (hasFailed()) {
        leave();
        return;
    }
    PageOutcome outcome = Fault{QStringLiteral("The page needs more memory than there is. Choose a "
                                               "lower resolution.")};
    try {
        outcome = m_finish(std::move(sheet));
    } catch (const std::bad_alloc &) {
        // Then the sentence above is the outcome.
    }
    // Faults too take their turn behind the pages that are to be saved.
    auto save = [this, settled = std::move(outcome)](const std::stop_token &) {
        settle(settled);
    };
    if (!m_saving.add(std::move(save), TaskQueue::Cancelling::ignored))
        leave();
}

void PageLine::settle(const PageOutcome &outcome)
{
    if (!hasFailed()) {
        if (const Fault *fault = faultOf(outcome))
            fail(*fault);
        else if (const auto *page = std::get_if<QImage>(&outcome))
            save(*page);
        else
            ++m_blankPages;
    }
    leave();
}

void PageLine::save(const QImage &page)
{
    if (const auto fault = m_files.save(page))
        fail(*fault);
    else
        m_events.saved(m_files.paths().size());
}

void PageLine::leave()
{
    const std::lock_guard lock(m_mutex);
    --m_inside;
    m_left.notify_all();
}

void PageLine::fail(const Fault &fault)
{
    {
        const std::lock_guard lock(m_mutex);
        m_fault = fault;
    }
    m_events.failed();
}

bool PageLine::hasFailed()
{
    const std::lock_guard lock(m_mutex);
    return m_fault.has_value();
}

} // namespace scanengine
