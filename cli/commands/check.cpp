// SPDX-License-Identifier: Apache-2.0
// zryaml check: loads many files, reports each that fails, and sums up.
#include "../document.h"
#include "../output.h"
#include "../schema.h"
#include "../terminal.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace zryaml::cli {

namespace {

class Progress { // one line on a terminal that is written over again and again
public:
    explicit Progress(size_t files) : files_(files), shown_(files >= many && error_moves_cursor()) {}
    ~Progress() { clear(); }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void show(size_t done) const noexcept
    {
        if (shown_)
            (void)fprintf(stderr, "\r\033[K%zu of %zu files checked", done, files_);
    }
    void clear() const noexcept
    {
        if (shown_)
            (void)fputs("\r\033[K", stderr);
    }

private:
    static constexpr size_t many = 16;
    size_t files_;
    bool shown_;
};

struct Totals {
    size_t valid = 0, invalid = 0, unreadable = 0;
};

class Checker {
public:
    explicit Checker(const Options &options) : options_(options), schemas_(options), reporter_(reporter_make(options))
    {
        options_.review = true;
    }

    void check(const std::string &file, const Progress &progress)
    {
        try {
            const OpenDocument open(options_, file);
            std::vector<Diagnostic> found = open.remarks();
            std::ranges::move(schemas_.check(open, file), std::back_inserter(found));
            ++(report(found, progress) ? totals_.valid : totals_.invalid);
        } catch (const Failure &failure) {
            (void)report(failure.diagnostics(), progress);
            ++(failure.exit_status() == Status::missing ? totals_.invalid : totals_.unreadable);
        }
    }
    Totals end()
    {
        reporter_->end();
        return totals_;
    }

private:
    // False if there is an error, or what counts as one.
    bool report(const std::vector<Diagnostic> &found, const Progress &progress)
    {
        if (!found.empty())
            progress.clear();
        for (const Diagnostic &diagnostic : found)
            reporter_->report(diagnostic);
        const std::uint32_t worst = options_.strict ? YAML_PROBLEM_WARNING : YAML_PROBLEM_ERROR;
        return std::ranges::none_of(found, [worst](const Diagnostic &one) { return one.level <= worst; });
    }

    Options options_;
    Schemas schemas_;
    std::unique_ptr<Reporter> reporter_;
    Totals totals_;
};

void totals_write(const Totals &totals, const Options &options)
{
    const std::string line = std::to_string(options.files.size()) + " checked, " + std::to_string(totals.valid) +
                             " valid, " + std::to_string(totals.invalid) + " invalid, " +
                             std::to_string(totals.unreadable) + " unreadable";
    if (options.diagnostics == "sarif") // standard output is one document
        (void)fprintf(stderr, "%s\n", line.c_str());
    else
        output_item(line);
}

} // namespace

Status check_run(const Options &options)
{
    Checker checker(options);
    {
        const Progress progress(options.files.size());
        size_t done = 0;
        for (const std::string &file : options.files) {
            checker.check(file, progress);
            progress.show(++done);
        }
    }
    const Totals totals = checker.end();
    totals_write(totals, options);
    if (totals.unreadable > 0)
        return Status::misuse;
    return totals.invalid > 0 ? Status::missing : Status::found;
}

} // namespace zryaml::cli
