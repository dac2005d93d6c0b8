// SPDX-License-Identifier: Apache-2.0
// Goes through the lines of the source and the nodes made from them side by side.
#include "review.h"

#include "../document_load.h"
#include "../layer_tag.h"
#include "../node_tree.h"
#include "problem_scene.h"

#include <cstdio>
#include <cstring>

namespace {

using namespace zryaml;
using namespace zryaml::parse;

constexpr size_t HintMax = 128;

void Warn(YamlProblems **problems, const YamlListNode &value, const Place &place, uint32_t code, const char *sentence,
          const char *hint) noexcept
{
    char path[YAML_KEY_BUF_SIZE];
    (void)ZRYAML_ValuePathGet(&value, sizeof(path), path);
    const YamlProblem problem = {YAML_PROBLEM_WARNING,
                                 code,
                                 place.line,
                                 place.column,
                                 0,
                                 0,
                                 ZRYAML_NameGet(ZRYAML_DocumentGet(&value)),
                                 path,
                                 sentence,
                                 hint};
    (void)ZRYAML_ProblemReport(problems, &problem);
}

void MergeReview(YamlProblems **problems, const YamlListNode &key) noexcept
{
    const YamlListNode *value = FirstChild(key);
    const bool isPlain = StateGet(key, NODE_STYLE_MASK, NODE_STYLE_SHIFT) == YAML_STYLE_PLAIN;
    if (value == nullptr || !isPlain || strcmp(key.pcValue, "<<") != 0 || key.uiFromAlias != 0)
        return;
    if (value->uiDataType == YAML_DATATYPE_MAP)
        Warn(problems, *value, {key.uiLine, key.uiColumn}, YAML_ERR_EVENT,
             "'<<' merges an alias only; this map stays under a key named '<<'",
             "write its keys here, or give it an anchor elsewhere and write '<<: *name'");
    else if (value->uiDataType == YAML_DATATYPE_SEQ)
        Warn(problems, *value, {key.uiLine, key.uiColumn}, YAML_ERR_EVENT,
             "'<<' merges an alias only; this sequence stays under a key named '<<'",
             "write a line '<<: *name' for each of its elements");
}

// Tags of layers do nothing in a document by itself, and something as soon as it is laid over another.
void TagReview(YamlProblems **problems, const YamlListNode &node) noexcept
{
    if ((node.uiState & NODE_TAG_MISSPELT) != 0 && node.uiFromAlias == 0)
        Warn(problems, node, {node.uiLine, node.uiColumn}, YAML_ERR_LAYER, MisspeltSentence,
             MisspeltHint(LayerTagMeant(node)));
}

class Nodes { // in the order in which the source made them
public:
    explicit Nodes(const YamlHandle &handle) noexcept
        : m_head(handle.stRoot.stAllocLink), m_next(handle.stRoot.stAllocLink.prev)
    {}
    // The last one that begins at a place or before it, NULL if there is none. Reviews those that are passed.
    const YamlListNode *PassTo(const Place &place, YamlProblems **problems) noexcept
    {
        for (; m_next != &m_head; m_next = m_next->prev) {
            const YamlListNode &node = *NodeOf(m_next, NodeLink::Alloc);
            if (node.uiLine > place.line || (node.uiLine == place.line && node.uiColumn > place.column))
                break;
            m_last = &node;
            TagReview(problems, node);
            if (node.pcValue != nullptr)
                MergeReview(problems, node);
        }
        return m_last;
    }

private:
    const YamlList &m_head;
    const YamlList *m_next;
    const YamlListNode *m_last = nullptr;
};

// Whether a line goes on with a plain text that is one of several, or looks as if it should be.
bool GoesOn(const YamlListNode &node, const Place &line) noexcept
{
    const bool isPlain = StateGet(node, NODE_STYLE_MASK, NODE_STYLE_SHIFT) == YAML_STYLE_PLAIN;
    if (!isPlain || node.uiFromAlias != 0 || node.uiLine == line.line)
        return false;
    return node.pcValue[0] == '-' || (node.pstFather != nullptr && ChildLinkOf(*node.pstFather) == NodeLink::Seq);
}

void LineReview(const LineText &line, Nodes &nodes, YamlProblems **problems) noexcept
{
    const Place place = {line.number, line.Indent()};
    const std::string_view text = place.column != 0 ? line.From(place.column) : "";
    if (text.size() < 2 || text[0] != '-' || text[1] == ' ' || text[1] == '\t' || text[1] == '-')
        return;
    const YamlListNode *node = nodes.PassTo(place, problems);
    if (node == nullptr || !GoesOn(*node, place))
        return;
    char hint[HintMax];
    const int size = static_cast<int>(text.size() < HintMax / 2 ? text.size() - 1 : 0);
    (void)snprintf(hint, sizeof(hint),
                   size != 0 ? "write '- %.*s' if it is an element" : "write '- ' if it is an element", size,
                   text.data() + 1);
    Warn(problems, *node, place, YAML_ERR_VALUE, "this line goes on with the text of the line before", hint);
}

// Tells of a load that has failed.
YamlHandle *Told(YamlHandle *handle, YamlProblems **problems) noexcept
{
    if (handle != nullptr)
        return handle;
    const YamlErrorInfo &error = *ZRYAML_LastErrorGet();
    const YamlProblem problem = {YAML_PROBLEM_ERROR,  error.uiCode, error.uiLine,    error.uiColumn,  error.uiFirstLine,
                                 error.uiFirstColumn, error.pcFile, error.pcKeyPath, error.pcMessage, error.pcHint};
    (void)ZRYAML_ProblemReport(problems, &problem);
    return nullptr;
}

} // namespace

void zryaml::parse::ReviewTell(const Source &source, const YamlHandle &handle, YamlProblems **problems) noexcept
{
    Nodes nodes(handle);
    SourceReader reader(source);
    PlaceCounter counter;
    LineText line;
    line.Begin(1);
    for (char32_t next = reader.Next(); next != SourceReader::End; next = reader.Next()) {
        counter.Take(next);
        if (!IsLineBreak(next)) {
            line.Add(next);
        } else if (counter.At().line > line.number) {
            LineReview(line, nodes, problems);
            line.Begin(counter.At().line);
        }
    }
    LineReview(line, nodes, problems);
    (void)nodes.PassTo({UINT32_MAX, UINT32_MAX}, problems);
}

YamlHandle *ZRYAML_FileReview(const char *pcPath, YamlProblems **ppstProblems)
{
    if (ppstProblems != nullptr)
        *ppstProblems = nullptr;
    const bool review = ppstProblems != nullptr && pcPath != nullptr;
    return Told(review ? DocumentOfFile(pcPath, {.flags = LOAD_TAGS, .review = ppstProblems}) : ZRYAML_FileLoad(pcPath),
                ppstProblems);
}

YamlHandle *ZRYAML_TextReview(const char *pcText, size_t ulLength, const char *pcName, YamlProblems **ppstProblems)
{
    if (ppstProblems != nullptr)
        *ppstProblems = nullptr;
    const bool review = ppstProblems != nullptr && pcText != nullptr;
    return Told(review ? DocumentOfText({pcText, ulLength}, pcName != nullptr ? pcName : "",
                                        {.flags = LOAD_TAGS, .review = ppstProblems})
                       : ZRYAML_TextLoad(pcText, ulLength, pcName),
                ppstProblems);
}
