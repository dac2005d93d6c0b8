// SPDX-License-Identifier: Apache-2.0
// What is told about a mistake, and the exception that carries it out of a command.
#pragma once

#include "command.h"

#include <cstdint>
#include <exception>
#include <utility>

namespace zryaml::cli {

struct Diagnostic {
    std::string stFile; // as on the command line; "" where the mistake is in no file
    std::string stMessage;
    std::string stHint; // may be empty
    std::string stPath; // key path, may be empty
    uint32_t uiCode = 0;
    uint32_t uiLine = 0; // 1-based; 0 where there is no place
    uint32_t uiColumn = 0;
    uint32_t uiFirstLine = 0; // of a repeated key: the place of the first one
    uint32_t uiFirstColumn = 0;
};

class Failure : public std::exception {
public:
    Failure(Status eStatus, Diagnostic stDiagnostic, bool bAbsent = false)
        : m_eStatus(eStatus), m_bAbsent(bAbsent), m_stDiagnostic(std::move(stDiagnostic))
    {}

    [[nodiscard]] const char *what() const noexcept override { return m_stDiagnostic.stMessage.c_str(); }
    [[nodiscard]] Status ExitStatus() const noexcept { return m_eStatus; }
    // Whether the path is well-formed and nothing stands there.
    [[nodiscard]] bool IsAbsent() const noexcept { return m_bAbsent; }
    [[nodiscard]] const Diagnostic &What() const noexcept { return m_stDiagnostic; }

private:
    Status m_eStatus;
    bool m_bAbsent;
    Diagnostic m_stDiagnostic;
};

} // namespace zryaml::cli
