// SPDX-License-Identifier: Apache-2.0
// How the library reports: the one log call, which also fills the error record of the thread, and its short forms.
// Code, message and result stand in one statement where a failure is found; callers pass the code up in silence. Each
// folder logs through its own YamlLogModule.
#pragma once

#include "error_record.h"

#include <zr_base.h>
#include <zr_safe.h>
#include <zr_yaml.h>

#define YAML_LOG_NOTE 0U  // trace and notes
#define YAML_LOG_WARN 1U  // warnings and secondary entries
#define YAML_LOG_ERROR 2U // failures

// The sink may call the library, so the record of the call under way is kept meanwhile.
#define YAML_LOG_ONLY(uiLevel, uiCode, ...)                                                            \
    [&](const char *pcFunction) {                                                                      \
        const zryaml::ErrorKeeper keeper;                                                              \
        ZR_LogWrite(&YamlLogModule, (uiLevel), (uiCode), __FILE__, __LINE__, pcFunction, __VA_ARGS__); \
    }(__func__)

#define YAML_LOG(uiLevel, uiCode, ...) \
    (zryaml::ErrorNote((uiCode), __VA_ARGS__), YAML_LOG_ONLY((uiLevel), (uiCode), __VA_ARGS__))

// A note or trace, which is no failure.
#define YAML_NOTE(uiCode, ...) YAML_LOG_ONLY(YAML_LOG_NOTE, (uiCode), __VA_ARGS__)

// Logs a failure and is its code.
#define YAML_FAIL(uiCode, ...) (YAML_LOG(YAML_LOG_ERROR, (uiCode), __VA_ARGS__), uint32_t{uiCode})

// Runs a bounds-checked call; a refusal is logged and the caller carries on.
#define YAML_SECURE(result) \
    ((result) == 0 ? (void)0 : YAML_LOG_ONLY(YAML_LOG_WARN, YAML_ERR_PARAM, "Secure check fail."))
