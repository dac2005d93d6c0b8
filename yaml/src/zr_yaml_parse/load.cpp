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
    yaml_parser_t rawRoom;
    bool isReady;

    Parser() noexcept
    {
        YAML_SECURE(memset_s(&rawRoom, sizeof(rawRoom), 0, sizeof(rawRoom)));
        isReady = yaml_parser_initialize(&rawRoom) != 0;
    }
    ~Parser()
    {
        if (isReady)
            yaml_parser_delete(&rawRoom);
    }
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;
};

struct Event { // emptied after each use, and however the loop is left
    yaml_event_t rawRoom;

    Event() noexcept { YAML_SECURE(memset_s(&rawRoom, sizeof(rawRoom), 0, sizeof(rawRoom))); }
    ~Event() { yaml_event_delete(&rawRoom); }
    Event(const Event &) = delete;
    Event &operator=(const Event &) = delete;
};

// Completes the error record of an event that was refused, or that begins a second document.
uint32_t EventRefuse(const TreeBuilder &builder, uint32_t result, const Source &source) noexcept
{
    const YamlHandle &handle = builder.handle;
    if (builder.documents > 1) // whatever its start has come to
        result = YAML_FAIL(YAML_ERR_PARSE, "There are more than one document signs in file which is not support.");
    if (result == YAML_ERR_EVENT)
        RefusalExplain(source, {handle.uiLine, handle.uiColumn}, handle.uiEventDepth == 0);
    ErrorPlaceAdd(handle.uiLine, handle.uiColumn);
    return result;
}

// Says why there is no event: the guard has refused, a key that is held is wrong, or what libyaml says.
uint32_t ParseRefuse(const yaml_parser_t &parser, const InputGuard &guard, TreeBuilder &builder,
                     const Source &source) noexcept
{
    if (guard.Refusal() != YAML_OK) {
        OffsetExplain(source, guard.RefusedAt());
        return guard.Refusal();
    }
    const uint32_t settled = builder.Settle();
    if (settled != YAML_OK)
        return EventRefuse(builder, settled, source);
    yaml_ParseErrProcess(&parser);
    ParseErrorExplain(parser, source);
    return YAML_ERR_PARSE;
}

uint32_t EventsParse(yaml_parser_t &parser, const Source &source, YamlHandle &handle) noexcept
{
    const InputGuard guard(parser, handle.stLimits);
    TreeBuilder builder = {handle, &handle.stRoot};
    builder.mayHold = true;
    for (Event event;; yaml_event_delete(&event.rawRoom)) {
        if (yaml_parser_parse(&parser, &event.rawRoom) == 0)
            return ParseRefuse(parser, guard, builder, source);
        const bool isEnd = event.rawRoom.type == YAML_STREAM_END_EVENT;
        const uint32_t result = builder.Take(event.rawRoom);
        if (result != YAML_OK || builder.documents > 1)
            return EventRefuse(builder, result, source);
        if (isEnd)
            return YAML_OK;
    }
}

uint32_t SourceParse(Source &source, YamlHandle &handle) noexcept
{
    Parser parser;
    if (!parser.isReady)
        return YAML_FAIL(YAML_ERR_PARSER_INIT, "Could not initialize the parser object.");
    source.Feed(parser.rawRoom);
    return EventsParse(parser.rawRoom, source, handle);
}

// An empty document that remembers its name right behind its record.
YamlHandle *HandleAlloc(const char *name) noexcept
{
    const size_t size = sizeof(YamlHandle) + strlen(name) + 1;
    void *block = size <= UINT32_MAX ? ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet()) : nullptr;
    if (block == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_NOMEM, "Failed to allocate memory for handle.");
        return nullptr;
    }
    auto *pstHandle = static_cast<YamlHandle *>(block);
    HandleInit(*pstHandle);
    pstHandle->pcName = static_cast<const char *>(memcpy(pstHandle + 1, name, strlen(name) + 1));
    return pstHandle;
}

// Builds the document of a source.
YamlHandle *DocumentLoad(Source &source, const char *name, const LoadSettings &settings) noexcept
{
    YamlHandle *handle = HandleAlloc(name);
    if (handle == nullptr)
        return nullptr;
    handle->uiNodeState = settings.nodeState;
    handle->uiLoadFlags = settings.flags;
    handle->stLimits.uiDepth -= std::min(settings.depthUsed, handle->stLimits.uiDepth);
    struct timespec start = {};
    yaml_StartPoint(&start);
    StoreOpen(*handle);
    const uint32_t result = SourceParse(source, *handle);
    AnchorsRelease(*handle);
    StoreClose(*handle);
    if (result == YAML_OK && handle->auiEventStack[0] == 0) {
        yaml_ParseElapseTimeGet(handle, &start);
        if (settings.review != nullptr)
            ReviewTell(source, *handle, settings.review);
        return handle;
    }
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARSE, "Parse file failed.");
    ZRYAML_HandleFree(handle);
    return nullptr;
}

} // namespace

uint32_t yaml_FileParse(FILE *pstFile, YamlHandle *pstHandle)
{
    Source source(pstFile);
    return SourceParse(source, *pstHandle);
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
    const char *knownAs = pcName != nullptr ? pcName : "";
    if (pcText != nullptr || ulLength == 0)
        return DocumentOfText({ulLength != 0 ? pcText : "", ulLength}, knownAs, {});
    ErrorClear();
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The parameter is null.");
    ErrorFileAdd(knownAs);
    return nullptr;
}

const char *ZRYAML_NameGet(const YamlHandle *pstHandle)
{
    return pstHandle != nullptr && pstHandle->pcName != nullptr ? pstHandle->pcName : "";
}
