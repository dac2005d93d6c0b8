// SPDX-License-Identifier: Apache-2.0
// Loading a file or a text: source and handle, then libyaml's event parser event by event. Whatever the way out, the
// source is closed, the parser deleted and the anchor records released; a failed load leaves nothing behind.
#include "../document_load.h"
#include "handle.h"
#include "input_guard.h"
#include "load_explain.h"
#include "node_store.h"
#include "parse_internal.h"
#include "review.h"
#include "tree_builder.h"

#include <algorithm>
#include <cstring>

using namespace zryaml;
using namespace zryaml::parse;

namespace {

struct Parser { // deleted however the loop is left
    yaml_parser_t stRaw;
    bool bReady;

    Parser() noexcept
    {
        YAML_SECURE(memset_s(&stRaw, sizeof(stRaw), 0, sizeof(stRaw)));
        bReady = yaml_parser_initialize(&stRaw) != 0;
    }
    ~Parser()
    {
        if (bReady)
            yaml_parser_delete(&stRaw);
    }
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;
};

struct Event { // emptied after each use, and however the loop is left
    yaml_event_t stRaw;

    Event() noexcept { YAML_SECURE(memset_s(&stRaw, sizeof(stRaw), 0, sizeof(stRaw))); }
    ~Event() { yaml_event_delete(&stRaw); }
    Event(const Event &) = delete;
    Event &operator=(const Event &) = delete;
};

// Completes the error record of an event that was refused, or that begins a second document.
uint32_t EventRefuse(const TreeBuilder &stBuilder, uint32_t uiResult, const Source &stSource) noexcept
{
    const YamlHandle &stHandle = stBuilder.handle;
    if (stBuilder.documents > 1) // whatever its start has come to
        uiResult = YAML_FAIL(YAML_ERR_PARSE, "There are more than one document signs in file which is not support.");
    if (uiResult == YAML_ERR_EVENT)
        RefusalExplain(stSource, {stHandle.uiLine, stHandle.uiColumn}, stHandle.uiEventDepth == 0);
    ErrorPlaceAdd(stHandle.uiLine, stHandle.uiColumn);
    return uiResult;
}

// Says why there is no event: the guard has refused, a key that is held is wrong, or what libyaml says.
uint32_t ParseRefuse(const yaml_parser_t &stParser, const InputGuard &stGuard, TreeBuilder &stBuilder,
                     const Source &stSource) noexcept
{
    if (stGuard.Refusal() != YAML_OK) {
        OffsetExplain(stSource, stGuard.RefusedAt());
        return stGuard.Refusal();
    }
    const uint32_t uiSettled = stBuilder.Settle();
    if (uiSettled != YAML_OK)
        return EventRefuse(stBuilder, uiSettled, stSource);
    yaml_ParseErrProcess(&stParser);
    ParseErrorExplain(stParser, stSource);
    return YAML_ERR_PARSE;
}

uint32_t EventsParse(yaml_parser_t &stParser, const Source &stSource, YamlHandle &stHandle) noexcept
{
    const InputGuard stGuard(stParser, stHandle.stLimits);
    TreeBuilder stBuilder = {stHandle, &stHandle.stRoot};
    stBuilder.mayHold = true;
    for (Event stEvent;; yaml_event_delete(&stEvent.stRaw)) {
        if (yaml_parser_parse(&stParser, &stEvent.stRaw) == 0)
            return ParseRefuse(stParser, stGuard, stBuilder, stSource);
        const bool bEnd = stEvent.stRaw.type == YAML_STREAM_END_EVENT;
        const uint32_t uiResult = stBuilder.Take(stEvent.stRaw);
        if (uiResult != YAML_OK || stBuilder.documents > 1)
            return EventRefuse(stBuilder, uiResult, stSource);
        if (bEnd)
            return YAML_OK;
    }
}

uint32_t SourceParse(Source &stSource, YamlHandle &stHandle) noexcept
{
    Parser stParser;
    if (!stParser.bReady)
        return YAML_FAIL(YAML_ERR_PARSER_INIT, "Could not initialize the parser object.");
    stSource.Feed(stParser.stRaw);
    return EventsParse(stParser.stRaw, stSource, stHandle);
}

// An empty document that remembers its name right behind its record.
YamlHandle *HandleAlloc(const char *pcName) noexcept
{
    const size_t ulSize = sizeof(YamlHandle) + strlen(pcName) + 1;
    void *pBlock = ulSize <= UINT32_MAX ? ZR_MemAlloc(static_cast<uint32_t>(ulSize), yaml_MemHandleGet()) : nullptr;
    if (pBlock == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory for handle.");
        return nullptr;
    }
    auto *pstHandle = static_cast<YamlHandle *>(pBlock);
    HandleInit(*pstHandle);
    pstHandle->pcName = static_cast<const char *>(memcpy(pstHandle + 1, pcName, strlen(pcName) + 1));
    return pstHandle;
}

// Builds the document of a source.
YamlHandle *DocumentLoad(Source &stSource, const char *pcName, const LoadSettings &stSettings) noexcept
{
    YamlHandle *pstHandle = HandleAlloc(pcName);
    if (pstHandle == nullptr)
        return nullptr;
    pstHandle->uiNodeState = stSettings.nodeState;
    pstHandle->uiLoadFlags = stSettings.flags;
    pstHandle->stLimits.uiDepth -= std::min(stSettings.depthUsed, pstHandle->stLimits.uiDepth);
    struct timespec stStart = {};
    yaml_StartPoint(&stStart);
    StoreOpen(*pstHandle);
    const uint32_t uiResult = SourceParse(stSource, *pstHandle);
    AnchorsRelease(*pstHandle);
    StoreClose(*pstHandle);
    if (uiResult == YAML_OK && pstHandle->auiEventStack[0] == 0) {
        yaml_ParseElapseTimeGet(pstHandle, &stStart);
        if (stSettings.review != nullptr)
            ReviewTell(stSource, *pstHandle, stSettings.review);
        return pstHandle;
    }
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARSE, "Parse file failed.");
    ZRYAML_HandleFree(pstHandle);
    return nullptr;
}

} // namespace

uint32_t yaml_FileParse(FILE *pstFile, YamlHandle *pstHandle)
{
    Source stSource(pstFile);
    return SourceParse(stSource, *pstHandle);
}

YamlHandle *zryaml::DocumentOfFile(const char *path, const LoadSettings &settings) noexcept
{
    ErrorClear();
    YamlHandle *handle = nullptr;
    if (yaml_MemInit() == YAML_OK) {
        Source source(path);
        if (source.IsOpen())
            handle = DocumentLoad(source, path, settings);
    }
    ErrorFileAdd(path);
    return handle;
}

YamlHandle *zryaml::DocumentOfText(std::string_view text, const char *name, const LoadSettings &settings) noexcept
{
    ErrorClear();
    YamlHandle *handle = nullptr;
    if (yaml_MemInit() == YAML_OK) {
        Source source(text);
        handle = DocumentLoad(source, name, settings);
    }
    ErrorFileAdd(name);
    return handle;
}

YamlHandle *zryaml::DocumentOpen(const char *name) noexcept
{
    YamlHandle *handle = yaml_MemInit() == YAML_OK ? HandleAlloc(name) : nullptr;
    if (handle != nullptr)
        StoreOpen(*handle);
    return handle;
}

void zryaml::DocumentClose(YamlHandle &handle) noexcept
{
    StoreClose(handle);
}

YamlHandle *ZRYAML_FileLoad(const char *pcPath)
{
    if (pcPath != nullptr)
        return DocumentOfFile(pcPath, {});
    ErrorClear();
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The parameter is null.");
    return nullptr;
}

YamlHandle *ZRYAML_TextLoad(const char *pcText, size_t ulLength, const char *pcName)
{
    const char *pcKnownAs = pcName != nullptr ? pcName : "";
    if (pcText != nullptr || ulLength == 0)
        return DocumentOfText({ulLength != 0 ? pcText : "", ulLength}, pcKnownAs, {});
    ErrorClear();
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The parameter is null.");
    ErrorFileAdd(pcKnownAs);
    return nullptr;
}

const char *ZRYAML_NameGet(const YamlHandle *pstHandle)
{
    return pstHandle != nullptr && pstHandle->pcName != nullptr ? pstHandle->pcName : "";
}
