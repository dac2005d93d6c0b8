// SPDX-License-Identifier: Apache-2.0
// The check command: loads many files, reports each that fails, and sums up.
#include "diagnostics.h"
#include "document.h"
#include "output.h"
#include "terminal.h"
#include "text.h"

#include <algorithm>
#include <cstdio>

namespace zryaml::cli {

namespace {

class Progress { // one line on a terminal that is written over again and again
public:
    explicit Progress(size_t ulFiles) : m_ulFiles(ulFiles), m_bShown(ulFiles >= Many && ErrorMovesCursor()) {}
    ~Progress() { Clear(); }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void Show(size_t ulDone) const noexcept
    {
        if (m_bShown)
            (void)fprintf(stderr, "\r\033[K%zu of %zu files checked", ulDone, m_ulFiles);
    }
    void Clear() const noexcept
    {
        if (m_bShown)
            (void)fputs("\r\033[K", stderr);
    }

private:
    static constexpr size_t Many = 16;
    size_t m_ulFiles;
    bool m_bShown;
};

struct Totals {
    size_t ulValid = 0, ulInvalid = 0, ulUnreadable = 0;
};

void FileCheck(const std::string &stFile, const Reporter &stReporter, const Progress &stProgress, Totals &stTotals)
{
    try {
        const Document stDocument(stFile);
        ++stTotals.ulValid;
    } catch (const Failure &stFailure) {
        stProgress.Clear();
        stReporter.Report(stFailure.What());
        ++(stFailure.ExitStatus() == Status::Missing ? stTotals.ulInvalid : stTotals.ulUnreadable);
    }
}

} // namespace

Status CheckRun(const Options &stOptions)
{
    const Reporter stReporter(stOptions.eDiagnostics);
    Totals stTotals;
    {
        const Progress stProgress(stOptions.astFile.size());
        size_t ulDone = 0;
        for (const std::string &stFile : stOptions.astFile) {
            FileCheck(stFile, stReporter, stProgress, stTotals);
            stProgress.Show(++ulDone);
        }
    }
    OutputItem(std::to_string(stOptions.astFile.size()) + " checked, " + std::to_string(stTotals.ulValid) + " valid, " +
                   std::to_string(stTotals.ulInvalid) + " invalid, " + std::to_string(stTotals.ulUnreadable) +
                   " unreadable",
               false);
    if (stTotals.ulUnreadable > 0)
        return Status::Misuse;
    return stTotals.ulInvalid > 0 ? Status::Missing : Status::Found;
}

} // namespace zryaml::cli
