// SPDX-License-Identifier: Apache-2.0
// Operations on a text of its own: loading it, with enough memory and with too little.
#include "case_file.h"
#include "case_operations.h"
#include "reading_check.h"

#include <algorithm>
#include <cstring>

namespace {

using std::string;
using std::to_string;

using Writer = string (*)(const YamlHandle &);

string Tree(const YamlHandle &stHandle)
{
    const string text = Replaced(TreeText(stHandle, true), "\"", "");
    return text.empty() ? "empty" : Printable(text);
}

string Ok(const YamlHandle &)
{
    return "ok";
}

// What the debug switch has counted for nodes and texts.
string Count(const YamlHandle &stHandle)
{
    const size_t ulBytes = stHandle.uiMemSize - sizeof(YamlHandle), ulNode = sizeof(YamlListNode);
    return to_string(ulBytes / ulNode) + " nodes " + to_string(ulBytes % ulNode) + " bytes";
}

// Of a text, or of a file by its path.
string LoadOutcome(const string &source, bool bFile, Writer pfnWrite)
{
    bool bLoaded = false;
    Base().bKeepNotes = pfnWrite == Tree; // the others are about something else
    string text = LoadRead([&] { return bFile ? ZRYAML_FileLoad(source.c_str()) : TextLoad(source); },
                           [&](const YamlHandle &st) { return (bLoaded = true) ? pfnWrite(st) + "\n" : ""; });
    text.resize(text.size() - Base().LogText().size());
    text += LogAndError("", bFile ? source : "doc");
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    if (bLoaded)
        return text;
    if (text.ends_with(PARSE_FAILED))
        text.resize(text.size() - strlen(PARSE_FAILED));
    text += "at " + Place(stError.uiLine, stError.uiColumn);
    if (stError.uiFirstLine != 0)
        text += " as " + Place(stError.uiFirstLine, stError.uiFirstColumn);
    return text + "\n";
}

template <Writer pfnWrite> string Load(YamlHandle *, const string &text)
{
    if (YamlHandle *pstHandle = pfnWrite == Tree ? TextLoad(text) : nullptr) {
        DocumentCheck(*pstHandle);
        ZRYAML_HandleFree(pstHandle);
    }
    const string outcome = LoadOutcome(text, false, pfnWrite);
    const string asFile = LoadOutcome(TempFile(text).Path(), true, pfnWrite);
    return outcome + (asFile != outcome ? "but as a file " + asFile : "");
}

string Loads16(YamlHandle *, const string &text)
{
    string little = "\xFF\xFE", big = "\xFE\xFF";
    for (const char cChar : text) {
        little += {cChar, '\0'};
        big += {'\0', cChar};
    }
    const string outcome = Load<Ok>(nullptr, little), other = Load<Ok>(nullptr, big);
    return outcome + (other != outcome ? "but as big endian " + other : "");
}

uint64_t g_ulFailed = 0; // allocations, by all cases

string StarveOnce(const string &text)
{
    Base().Reset();
    const string outcome = LoadOutcome(text, false, Tree);
    const uint64_t ulAllocations = Base().ulAllocations;
    for (uint64_t ul = 1; ul <= ulAllocations; ++ul) {
        Base().Reset();
        Base().ulFailAllocation = ul;
        testing::Test::RecordProperty("allocations_failed", to_string(++g_ulFailed));
        const string failed = LoadOutcome(text, false, Tree), log = Base().LogText();
        const char *pcEnd = ul == 1 ? "2 c Failed to allocate memory for handle.\n" : PARSE_FAILED;
        const bool bLeft = failed.find("left") != failed.npos, bLoaded = failed.find("\nat ") == failed.npos;
        if (bLeft || bLoaded || log.find("2 c ") == log.npos || !log.ends_with(pcEnd))
            return "allocation " + to_string(ul) + ": " + failed + log;
        Base().Reset();
        if (LoadOutcome(text, false, Tree) != outcome || Base().ulAllocations != ulAllocations)
            return "afterwards: " + Base().LogText();
    }
    return ulAllocations > 0 ? "clean\n" : "no allocation\n";
}

// Whether nodes share blocks, so that only some of them begin with an allocation.
bool BlocksAreShared()
{
    Base().Reset();
    ZRYAML_HandleFree(TextLoad("[a, a, a]"));
    return Base().ulAllocations <= 2;
}

// The document with more in front, so that other nodes and texts of it come to begin a block.
string Padded(const string &text, size_t ulBytes)
{
    string padded;
    for (int i = 0; ulBytes > 0; ++i) {
        const size_t ulHere = std::min<size_t>(ulBytes, 240);
        padded += (text.starts_with("- ") ? "- " : "pad" + to_string(i) + ": ") + string(ulHere, 'p') + "\n";
        ulBytes -= ulHere;
    }
    return padded + text;
}

string Starve(YamlHandle *, const string &text)
{
    string outcome = StarveOnce(text);
    const bool bBlock = text[0] != '[' && (text.find(": ") < text.find('\n') || text.starts_with("- "));
    const size_t ulMost = bBlock && BlocksAreShared() ? 1024 : 0;
    for (size_t ulBytes = 40; ulBytes <= ulMost && outcome == "clean\n"; ulBytes += 40)
        outcome = StarveOnce(Padded(text, ulBytes));
    return outcome;
}

} // namespace

string Place(uint32_t uiLine, uint32_t uiColumn)
{
    return to_string(uiLine) + ":" + to_string(uiColumn);
}

string LogAndError(const string &path, const string &file)
{
    const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
    const auto itCause = std::ranges::find_if(Base().log, [](const LogRecord &st) { return st.uiLevel > 0; });
    const LogRecord stCause = itCause != Base().log.end() ? *itCause : LogRecord{};
    const auto Says = [&stCause](const char *pcText, const string &text) {
        return string(pcText).substr(0, 1020) == (stCause.uiCode != 0 ? text.substr(0, 1020) : "");
    };
    const bool bSame = stError.uiCode == stCause.uiCode && Says(stError.pcRecord, stCause.text) &&
                       Says(stError.pcKeyPath, path) && Says(stError.pcFile, file);
    return Base().LogText() +
           (bSame ? ""
                  : "error: " + to_string(stError.uiCode) + " " + stError.pcRecord + ", " + stError.pcKeyPath + "\n");
}

const std::map<string, Operation> g_loadOperations = {
    {"load", {Load<Tree>, Operation::Text}},
    {"loads", {Load<Ok>, Operation::Text}},
    {"loads16", {Loads16, Operation::Text}},
    {"file", {[](auto *, auto &path) { return LoadOutcome(path, true, Tree); }, Operation::Text}},
    {"memory", {[](auto *, auto &text) { return LoadOutcome(text, false, Count); }, Operation::Text}},
    {"starve", {Starve, Operation::Text}},
};
