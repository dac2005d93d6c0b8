// SPDX-License-Identifier: Apache-2.0
/// @file
/// A configuration of a type of one's own that reloads while threads read it: zr_yaml_watch.h for C++.
///
/// @code
/// auto live = zryaml::Live<Config>::open(zryaml::Layers().file("app.yaml").environment("APP_"));
/// if (!live)
///     return complain(live.error().what());
/// live->on_change("log", [](const Config &now) { log_level_set(now.log.level); });
///
/// for (pollfd wake{live->fd(), POLLIN, 0}; poll(&wake, 1, -1) > 0;) {
///     zryaml::Result<bool, zryaml::Problems> polled = live->poll();
///     if (!polled.has_value())
///         complain(polled.error().what()); // what was good stays
/// }
/// @endcode
///
/// and in each worker, for each piece of work:
///
/// @code
/// std::shared_ptr<const Config> conf = live->get();
/// @endcode
#ifndef ZR_YAML_WATCH_HPP
#define ZR_YAML_WATCH_HPP

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <zr_yaml/bind.hpp>
#include <zr_yaml/layers.hpp>
#include <zr_yaml/problem.hpp>
#include <zr_yaml_watch.h>

namespace zryaml {

namespace detail {

// Copies problems into a list that the library handed to a check.
inline void problems_report(YamlProblems *list, const Problems &problems)
{
    for (const Problem &problem : problems) {
        const YamlProblem copy{static_cast<std::uint32_t>(problem.level),
                               problem.code,
                               problem.line,
                               problem.column,
                               problem.first_line,
                               problem.first_column,
                               problem.source.c_str(),
                               problem.path.c_str(),
                               problem.message.c_str(),
                               problem.hint.c_str()};
        (void)ZRYAML_ProblemReport(&list, &copy);
    }
}

inline std::string path_of(const YamlListNode *value)
{
    return written([value](std::uint32_t size, char *text) { return ZRYAML_ValuePathGet(value, size, text); });
}

// Whether a path lies at another one or below it.
inline bool is_within(std::string_view path, std::string_view top)
{
    return path.substr(0, top.size()) == top &&
           (top.empty() || path.size() == top.size() || path[top.size()] == '.' || path[top.size()] == '[');
}

} // namespace detail

/// How a Live is watched.
struct LiveOptions {
    std::chrono::milliseconds interval{0}; ///< YamlWatchOptions::uiInterval; 0: the usual one
    std::chrono::milliseconds settle{0};   ///< YamlWatchOptions::uiSettle; 0: the usual time
    bool always_timer = false;             ///< YAML_WATCH_TIMER
};

/// The newest good version of a configuration. A version is good if it loads and can be bound to a T.
///
/// get() may be called by any thread at any time; fd(), poll() and on_change() belong to one thread, and so does moving
/// or destroying it, with no other call under way. What get() gave lives on by itself.
template <class T> class Live {
public:
    /// Loads and binds layers, and begins to watch them.
    ///
    /// @param layers   Layers; copied, but for a description given by Layers::record().
    /// @param options  Times.
    /// @return The watch, or all problems of the first version.
    [[nodiscard]] static Result<Live, Problems> open(const Layers &layers, const LiveOptions &options = {})
    {
        auto state = std::make_unique<State>();
        YamlProblems *list = nullptr;
        Problems unfit = layers.apply([&](const YamlLayer *given, std::uint32_t count, const YamlLayerOptions &how) {
            const YamlWatchOptions watch{sizeof(YamlWatchOptions),
                                         options.always_timer ? YAML_WATCH_TIMER : 0,
                                         static_cast<std::uint32_t>(options.interval.count()),
                                         static_cast<std::uint32_t>(options.settle.count()),
                                         &how,
                                         State::check,
                                         state.get()};
            state->watch = ZRYAML_WatchOpen(given, count, &watch, &list);
        });
        Problems problems(list);
        ZRYAML_ProblemsFree(list);
        if (state->watch == nullptr)
            return unfit.empty() ? std::move(problems) : std::move(unfit);
        state->publish();
        return Live(std::move(state));
    }

    /// @return The newest good version; never null.
    [[nodiscard]] std::shared_ptr<const T> get() const
    {
        const std::lock_guard<std::mutex> lock(state_->lock); // held for a copy of the pointer only
        return state_->newest;
    }

    /// @return The descriptor to wait on, as ZRYAML_WatchFdGet gives it.
    [[nodiscard]] int fd() const noexcept { return ZRYAML_WatchFdGet(state_->watch); }

    /// Takes note of what happened, as ZRYAML_WatchPoll does, and calls what on_change() was given.
    ///
    /// @param notes  Receives warnings and notes of a new version; NULL: not wanted.
    /// @return Whether there is a new version; or what is wrong with it, and then the old one stays.
    Result<bool, Problems> poll(Problems *notes = nullptr)
    {
        YamlProblems *list = nullptr;
        const std::uint32_t code = ZRYAML_WatchPoll(state_->watch, &list);
        Problems problems(list);
        ZRYAML_ProblemsFree(list);
        if (code != YAML_OK && code != YAML_WATCH_CHANGED)
            return problems;
        if (notes != nullptr)
            *notes = std::move(problems);
        if (code == YAML_WATCH_CHANGED) {
            state_->publish();
            state_->tell();
        }
        return code == YAML_WATCH_CHANGED;
    }

    /// Has a function called inside poll(), once for each new version that differs at a key path or below it.
    ///
    /// @param path      Key path as ZRYAML_ValuePathGet writes it, such as "servers[0]"; "" for the whole document.
    /// @param function  Called with the new version, which get() gives already, in the order of the calls of this. It
    ///                  may call get(), but neither poll() nor on_change().
    void on_change(std::string path, std::function<void(const T &)> function)
    {
        state_->listeners.push_back({std::move(path), std::move(function)});
    }

private:
    struct Listener {
        std::string path;
        std::function<void(const T &)> function;
    };

    struct State { // stays where it is, as the check has its address
        YamlWatch *watch = nullptr;
        std::shared_ptr<const T> candidate; // bound by the check
        std::shared_ptr<const T> newest;
        std::mutex lock; // of newest
        std::vector<Listener> listeners;

        State() = default;
        ~State() { ZRYAML_WatchClose(watch); }
        State(const State &) = delete;
        State &operator=(const State &) = delete;

        static std::uint32_t check(YamlHandle *document, void *self, YamlProblems *list)
        {
            State &state = *static_cast<State *>(self);
            const std::optional<std::uint32_t> code =
                detail::guarded([&] { return std::make_optional(state.judge(document, list)); });
            return code.value_or(YAML_ERR_NOMEM);
        }

        std::uint32_t judge(YamlHandle *document, YamlProblems *list)
        {
            Problems notes;
            Result<T, Problems> bound = detail::bind_node<T>(document, nullptr, &notes);
            detail::problems_report(list, bound.has_value() ? notes : bound.error());
            if (!bound.has_value())
                return bound.error().empty() ? YAML_ERR_NOMEM : bound.error()[0].code;
            candidate = std::make_shared<const T>(std::move(bound).value());
            return YAML_OK;
        }

        void publish()
        {
            {
                const std::lock_guard<std::mutex> guard(lock);
                newest.swap(candidate);
            }
            candidate.reset(); // the old version
        }

        void tell() const
        {
            std::vector<bool> due(listeners.size());
            YamlChange change = YAML_CHANGE_INIT;
            while (ZRYAML_WatchChangeNext(watch, &change) == YAML_OK) {
                const std::string path = detail::path_of(change.pstNew != nullptr ? change.pstNew : change.pstOld);
                for (std::size_t at = 0; at < due.size(); ++at)
                    due[at] = due[at] || detail::is_within(path, listeners[at].path);
            }
            for (std::size_t at = 0; at < due.size(); ++at) {
                if (due[at])
                    listeners[at].function(*newest);
            }
        }
    };

    explicit Live(std::unique_ptr<State> state) noexcept : state_(std::move(state)) {}

    std::unique_ptr<State> state_;
};

} // namespace zryaml

#endif
