// SPDX-License-Identifier: Apache-2.0
// Writes diagnostics to standard error, in lines that an editor can jump to or as JSON objects, one a line.
#pragma once

#include "failure.h"

namespace zryaml::cli {

class Reporter {
public:
    explicit Reporter(DiagnosticsFormat eFormat) noexcept : m_eFormat(eFormat) {}
    void Report(const Diagnostic &stDiagnostic) const;

private:
    DiagnosticsFormat m_eFormat;
};

} // namespace zryaml::cli
