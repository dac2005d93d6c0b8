// SPDX-License-Identifier: Apache-2.0
// Loading a file or a text: path, file and handle, then libyaml's event parser event by event. Whatever the way out,
// the file is closed, the parser deleted and the anchor records released; a failed load leaves nothing behind.
#include "input_guard.h"
#include "load_explain.h"
#include "node_store.h"
#include "parse_internal.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace {

struct FileClose {
    void operator()(FILE *pstFile) const noexcept { (void)fclose(pstFile); }
};
using FilePtr = std::unique_ptr<FILE, FileClose>;

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

struct ParseState {
    YamlListNode *pstCurrNode;
    uint32_t uiKeyValueFlag = 2; // a key is expected
    uint32_t uiLastEventType = 0;
    uint32_t uiDocumentCount = 0;
};

// Handles one event; a second document fails the load after its start has been handled.
uint32_t EventHandle(const yaml_event_t &stEvent, ParseState &stState, YamlHandle &stHandle) noexcept
{
    const uint32_t uiResult = yaml_EventAnalyze(&stEvent, &stState.pstCurrNode, &stState.uiKeyValueFlag,
                                                &stState.uiLastEventType, &stState.uiDocumentCount, &stHandle);
    if (stState.uiDocumentCount <= 1)
        return uiResult;
    const uint32_t uiCode =
        YAML_FAIL(YAML_ERR_PARSE, "There are more than one document signs in file which is not support.");
    ErrorHintAdd("a file holds one document: a second '---' begins another");
    return uiCode;
}

uint32_t EventsParse(yaml_parser_t &stParser, const Source &stSource, YamlHandle &stHandle) noexcept
{
    const InputGuard stGuard(stParser, stHandle.stLimits);
    ParseState stState = {&stHandle.stRoot};
    for (Event stEvent;; yaml_event_delete(&stEvent.stRaw)) {
        if (yaml_parser_parse(&stParser, &stEvent.stRaw) == 0) {
            if (stGuard.Refusal() != YAML_OK)
                return stGuard.Refusal();
            yaml_ParseErrProcess(&stParser);
            ParseErrorExplain(stParser, stSource);
            return YAML_ERR_PARSE;
        }
        const bool bEnd = stEvent.stRaw.type == YAML_STREAM_END_EVENT;
        const uint32_t uiResult = EventHandle(stEvent.stRaw, stState, stHandle);
        if (uiResult != YAML_OK)
            ErrorPlaceAdd(stHandle.uiLine, stHandle.uiColumn);
        if (uiResult != YAML_OK || bEnd)
            return uiResult;
    }
}

uint32_t SourceParse(const Source &stSource, YamlHandle &stHandle) noexcept
{
    Parser stParser;
    if (!stParser.bReady)
        return YAML_FAIL(YAML_ERR_PARSER_INIT, "Could not initialize the parser object.");
    if (stSource.pstFile != nullptr)
        yaml_parser_set_input_file(&stParser.stRaw, stSource.pstFile);
    else
        yaml_parser_set_input_string(&stParser.stRaw, reinterpret_cast<const unsigned char *>(stSource.svText.data()),
                                     stSource.svText.size());
    return EventsParse(stParser.stRaw, stSource, stHandle);
}

FilePtr FileOpen(const char *pcPath) noexcept
{
    char acRealPath[PATH_MAX];
    acRealPath[0] = '\0';
    if (realpath(pcPath, acRealPath) == nullptr) {
        const int iError = errno; // a log may change it
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "Failed to get real path. (InputFile=%s)", pcPath);
        ErrorHintAdd("%s", strerrordesc_np(iError));
        return nullptr;
    }
    FilePtr pstFile(fopen(acRealPath, "r"));
    if (pstFile == nullptr) {
        const int iError = errno;
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_OPEN, "Failed to open the file. (File=%s)", pcPath);
        ErrorHintAdd("%s", strerrordesc_np(iError));
    }
    return pstFile;
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
    yaml_HandleInit(pstHandle);
    pstHandle->pcName = static_cast<const char *>(memcpy(pstHandle + 1, pcName, strlen(pcName) + 1));
    return pstHandle;
}

// Builds the document of a source, which is given back as soon as it is read.
YamlHandle *DocumentLoad(Source stSource, FilePtr pstFile, const char *pcName) noexcept
{
    YamlHandle *pstHandle = HandleAlloc(pcName);
    if (pstHandle == nullptr)
        return nullptr;
    struct timespec stStart = {};
    yaml_StartPoint(&stStart);
    StoreOpen(*pstHandle);
    const uint32_t uiResult =
        stSource.pstFile != nullptr ? yaml_FileParse(stSource.pstFile, pstHandle) : SourceParse(stSource, *pstHandle);
    pstFile.reset();
    yaml_AnchorListRealse(pstHandle);
    StoreClose(*pstHandle);
    if (uiResult == YAML_OK && pstHandle->auiEventStack[0] == 0) {
        yaml_ParseElapseTimeGet(pstHandle, &stStart);
        return pstHandle;
    }
    YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARSE, "Parse file failed.");
    ZRYAML_HandleFree(pstHandle);
    return nullptr;
}

} // namespace

uint32_t yaml_FileParse(FILE *pstFile, YamlHandle *pstHandle)
{
    return SourceParse({pstFile, {}}, *pstHandle);
}

YamlHandle *ZRYAML_FileLoad(const char *pcPath)
{
    ErrorClear();
    if (pcPath == nullptr) {
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The parameter is null.");
        return nullptr;
    }
    YamlHandle *pstHandle = nullptr;
    if (yaml_MemInit() == YAML_OK) {
        FilePtr pstFile = FileOpen(pcPath);
        FILE *pstRaw = pstFile.get();
        if (pstRaw != nullptr)
            pstHandle = DocumentLoad({pstRaw, {}}, std::move(pstFile), pcPath);
    }
    ErrorFileAdd(pcPath);
    return pstHandle;
}

YamlHandle *ZRYAML_TextLoad(const char *pcText, size_t ulLength, const char *pcName)
{
    ErrorClear();
    const char *pcKnownAs = pcName != nullptr ? pcName : "";
    YamlHandle *pstHandle = nullptr;
    if (pcText == nullptr && ulLength != 0)
        YAML_LOG(YAML_LOG_ERROR, YAML_ERR_PARAM, "The parameter is null.");
    else if (yaml_MemInit() == YAML_OK)
        pstHandle = DocumentLoad({nullptr, {ulLength != 0 ? pcText : "", ulLength}}, nullptr, pcKnownAs);
    ErrorFileAdd(pcKnownAs);
    return pstHandle;
}

const char *ZRYAML_NameGet(const YamlHandle *pstHandle)
{
    return pstHandle != nullptr && pstHandle->pcName != nullptr ? pstHandle->pcName : "";
}
