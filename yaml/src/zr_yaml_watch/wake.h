// SPDX-License-Identifier: Apache-2.0
// The descriptor of a watch: an epoll instance over the timer and, where there is one, the kernel's telling of changes.
// And when there is something to do, in ns of the monotonic clock.
#pragma once

#include <cstdint>

namespace zryaml::watch {

constexpr uint64_t Millisecond = 1'000'000;
constexpr uint64_t BurstMax = 500 * Millisecond; // after which what is there is taken, settled or not

[[nodiscard]] uint64_t Now() noexcept;

struct Noticed {          // what a drain of the events found
    bool any = false;     // something that matters
    bool writing = false; // somebody has written to a file and not closed it yet
};

class Wake {
public:
    // False if the system has no descriptor.
    [[nodiscard]] bool Open() noexcept;
    void Close() noexcept;
    [[nodiscard]] int File() const noexcept { return m_poll; }
    // False if the system refuses.
    [[nodiscard]] bool Add(int file) const noexcept;

    // Makes the descriptor readable at that time, or now and for good if it has passed; 0: never.
    [[nodiscard]] bool Arm(uint64_t time) const noexcept;
    // As above, for what comes next.
    [[nodiscard]] bool ArmNext() const noexcept;

    // Events are to be looked at when they have settled.
    void Notice(const Noticed &noticed, uint64_t now, uint64_t settle) noexcept;
    // Wants a look at that time, or earlier if that is wanted already.
    void LookAt(uint64_t time) noexcept;
    // Whether it is time for a look, and if so forgets what it was for.
    [[nodiscard]] bool IsTime(uint64_t now) noexcept;

private:
    int m_poll = -1;
    int m_timer = -1;
    uint64_t m_burst = 0;   // when the first event of the burst under way came; 0: none is
    uint64_t m_settled = 0; // when it will be over
    uint64_t m_next = 0;    // when to look without any event; 0: never
};

} // namespace zryaml::watch
