// SPDX-License-Identifier: Apache-2.0
// The timer and the descriptor. The timer is never read: setting it anew is what makes it silent.
#include "watch_internal.h"

#include <algorithm>
#include <ctime>
#include <sys/timerfd.h>

using namespace zryaml;
using namespace zryaml::watch;

namespace {

constexpr uint64_t Second = 1000 * Millisecond;

// The earlier of two times, of which 0 is none.
uint64_t Earlier(uint64_t one, uint64_t other) noexcept
{
    return one == 0 || (other != 0 && other < one) ? other : one;
}

} // namespace

uint64_t zryaml::watch::Now() noexcept
{
    struct timespec now = {};
    (void)clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<uint64_t>(now.tv_sec) * Second + static_cast<uint64_t>(now.tv_nsec);
}

bool zryaml::watch::Wake::Open() noexcept
{
    m_poll = System().pfnPollMake();
    if (m_poll >= 0)
        m_timer = System().pfnTimerMake();
    return m_timer >= 0 && Add(m_timer);
}

void zryaml::watch::Wake::Close() noexcept
{
    for (const int file : {m_timer, m_poll}) {
        if (file >= 0)
            (void)System().pfnClose(file);
    }
}

bool zryaml::watch::Wake::Add(int file) const noexcept
{
    return System().pfnPollAdd(m_poll, file) == 0;
}

bool zryaml::watch::Wake::Arm(uint64_t time) const noexcept
{
    struct itimerspec when = {};
    when.it_value.tv_sec = static_cast<time_t>(time / Second);
    when.it_value.tv_nsec = static_cast<long>(time % Second);
    return System().pfnTimerSet(m_timer, &when) == 0;
}

bool zryaml::watch::Wake::ArmNext() const noexcept
{
    return Arm(Earlier(m_settled, m_next));
}

void zryaml::watch::Wake::Notice(const Noticed &noticed, uint64_t now, uint64_t settle) noexcept
{
    if (!noticed.any)
        return;
    if (m_burst == 0)
        m_burst = now;
    m_settled = noticed.writing ? m_burst + BurstMax : std::min(now + settle, m_burst + BurstMax);
}

void zryaml::watch::Wake::LookAt(uint64_t time) noexcept
{
    m_next = Earlier(m_next, time);
}

bool zryaml::watch::Wake::IsTime(uint64_t now) noexcept
{
    const uint64_t due = Earlier(m_settled, m_next);
    if (due == 0 || now < due)
        return false;
    m_burst = m_settled = m_next = 0;
    return true;
}
