// SPDX-License-Identifier: Apache-2.0
// The table from the log's words to plain ones, for all that the library itself refuses. What libyaml refuses has its
// sentences in zr_yaml_parse/load_explain.cpp. Rows of one code stand together, the one for all its other records last.
#include "plain_sentence.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include <zr_yaml.h>

namespace {

struct Row {
    uint32_t uiCode;
    const char *pcRecord; // its format; NULL: any
    zryaml::PlainSentence plain;
};

constexpr const char *NullArgument = "an argument is NULL";
constexpr const char *MergeHint = "what '<<' merges must be a map, or a sequence of maps";
constexpr const char *KeyHint = "only a text can be a key: is a bracket before it left open?";

constexpr Row g_row[] = {
    {YAML_ERR_NOMEM,
     "The file is too large. (Limit=%zu)",
     {"the file has more than %zu bytes", "a file may have %zu bytes (limit ulFileBytes)"}},
    {YAML_ERR_NOMEM, "The alias expansion is too large. (Alias=%s)", {"'*%s' makes the document too large", ""}},
    {YAML_ERR_NOMEM, nullptr, {"there is not enough memory", ""}},

    {YAML_ERR_PARAM, "Failed to get real path. (InputFile=%s)", {"the file cannot be found", ""}},
    {YAML_ERR_PARAM, "The parameter is null.", {NullArgument, ""}},
    {YAML_ERR_PARAM, "The input parameter is invalid. (Handle=%p, Key=%p)", {NullArgument, ""}},
    {YAML_ERR_PARAM, "The parameter is invalid to get debug information.", {NullArgument, ""}},
    {YAML_ERR_PARAM,
     "The parameter is invalid to dump YAML context.",
     {"an argument is NULL, or the buffer has no room", ""}},
    {YAML_ERR_PARAM, "The parameter is invalid to get iterator.", {NullArgument, ""}},
    {YAML_ERR_PARAM, "The input parameter is invalid to get key and value.", {NullArgument, ""}},
    {YAML_ERR_PARAM, "The input iterator is invalid.", {"this is not an iterator that yaml_IteratorCreate made", ""}},
    {YAML_ERR_PARAM,
     "The limits are invalid.",
     {"the limits are not valid", "start from ZRYAML_LimitsGet; uiDepth may be 1 to 512"}},
    {YAML_ERR_PARAM,
     "The node style below the destination is not map or sequence. (DataType=%u)",
     {"there is neither a map nor a sequence to walk", ""}},
    {YAML_ERR_PARAM, "There is an internal error in libYAML.", {"libyaml failed and did not say why", ""}},

    {YAML_ERR_KEY,
     "The current file is begin with sequence, but the key is begin with map. (Key=%s)",
     {"the document is a sequence, and the key path begins with a key", "begin the path with an index, such as [0]"}},
    {YAML_ERR_KEY, nullptr, {"the key path is malformed", ""}},

    {YAML_ERR_NOT_FOUND, "Can not find the yaml node with key. (Key=%.*s)", {"there is no key '%.*s'", ""}},
    {YAML_ERR_NOT_FOUND, "Can't find the specified value. (Index=%u)", {"there is no element [%u]", ""}},
    {YAML_ERR_NOT_FOUND, nullptr, {"there is nothing at this key path", ""}},

    {YAML_ERR_EMPTY,
     "There is not any data below this branch. (NodeData=%s)",
     {"'%s' is a scalar, nothing is below it", ""}},
    {YAML_ERR_EMPTY, "There is not any data in the child list.", {"there is no value here", ""}},
    {YAML_ERR_EMPTY, "The map list is empty. (Scalar=%s)", {"the map is empty", ""}},
    {YAML_ERR_EMPTY, nullptr, {"the sequence is empty", ""}},

    {YAML_ERR_BUF, "The input key is too long to format.", {"the key path is empty or has more than 1023 bytes", ""}},
    {YAML_ERR_BUF, nullptr, {"the dump does not fit into the buffer", "a larger buffer holds all of it"}},

    {YAML_ERR_POOL, nullptr, {"there is not enough memory", ""}},
    {YAML_ERR_OPEN, nullptr, {"the file cannot be opened", ""}},
    {YAML_ERR_PARSER_INIT, nullptr, {"there is not enough memory", ""}},

    {YAML_ERR_INDEX,
     "The array index has not been specified.",
     {"this is a sequence, and the key path names no element of it", "give an index, such as [0]"}},
    {YAML_ERR_INDEX, nullptr, {"the index in the key path is malformed", ""}},

    {YAML_ERR_SAME, nullptr, {"the key '%s' stands twice in one map", "rename or remove one of them"}},

    {YAML_ERR_EVENT, "It does not support continuous map events.", {"a map cannot be a key", KeyHint}},
    {YAML_ERR_EVENT,
     "It does not support appearing a sequence event after map event.",
     {"a sequence cannot be a key", KeyHint}},
    {YAML_ERR_EVENT,
     "It does not support an alias as a map key. (Alias=%s)",
     {"the alias '*%s' cannot be a key", "write the text itself"}},
    {YAML_ERR_EVENT,
     "Unknown last event when add scalar data. (Event=%u)",
     {"the document is one text, and neither a map nor a sequence",
      "a document is a map or a sequence: is a space missing after a ':' or '-'?"}},
    {YAML_ERR_EVENT, "The scalar holds a NUL character which is not supported.", {"a text holds a NUL character", ""}},
    {YAML_ERR_EVENT, "The collections are nested too deep. (Depth=%u)", {"maps and sequences are nested %u deep", ""}},
    {YAML_ERR_EVENT,
     "There are too many blanks in a row. (Limit=%zu)",
     {"there are more than %zu blanks in a row", "spaces, tabs and line breaks may come to %zu bytes in a row"}},
    {YAML_ERR_EVENT,
     "The directive is too long. (Limit=%zu)",
     {"the directive has more than %zu bytes", "a %%TAG directive may have %zu bytes"}},
    {YAML_ERR_EVENT,
     "There are too many directives. (Limit=%u)",
     {"there are more than %u directives", "a file may have %u %%TAG directives (limit uiDirectives)"}},
    {YAML_ERR_EVENT,
     "Can not merge mapping with a single scalar. (Scalar=%s)",
     {"'<<' cannot merge the text '%s' into a map", MergeHint}},

    {YAML_ERR_NODE_TYPE,
     "The value for specified key is not sequence node. (DataType=%u)",
     {"the value is not a sequence", ""}},
    {YAML_ERR_NODE_TYPE, "The current node is not sequence node. (DataType=%u)", {"the value is not a sequence", ""}},
    {YAML_ERR_NODE_TYPE, nullptr, {"the key path has an index where no sequence is", ""}},

    {YAML_ERR_PARSE,
     "There are more than one document signs in file which is not support.",
     {"the file holds a second document", "a file holds one document: a second '---' begins another"}},
    {YAML_ERR_PARSE,
     "Can not merge a single scalar in sequence anchor to map. (Scalar=%s)",
     {"'<<' cannot merge the text '%s' into a map", MergeHint}},
    {YAML_ERR_PARSE,
     "Can not merge a single scalar to a map. (Scalar=%s)",
     {"'<<' cannot merge the text '%s' into a map", MergeHint}},
    {YAML_ERR_PARSE,
     "Can not merge a sequence to a map.",
     {"'<<' cannot merge a sequence of sequences into a map", MergeHint}},

    {YAML_ERR_NOT_SCALAR, "The specified node is a map node.", {"the value is a map, not a scalar", ""}},
    {YAML_ERR_NOT_SCALAR, nullptr, {"the value is a sequence, not a scalar", ""}},

    {YAML_ERR_SWITCH_OFF, nullptr, {"the debug switch is off", "ZRYAML_DebugSwitchSet(1) turns it on"}},

    {YAML_ERR_ALIAS,
     nullptr,
     {"there is no anchor '&%s' for this alias",
      "write '&%s' before it, on something that has ended; quote a text that begins with '*'"}},
};
static_assert(std::ranges::is_sorted(g_row, {}, &Row::uiCode));

} // namespace

zryaml::PlainSentence zryaml::PlainSentenceFind(uint32_t code, const char *record) noexcept
{
    const auto *row = std::ranges::lower_bound(g_row, code, {}, &Row::uiCode);
    for (; row != std::end(g_row) && row->uiCode == code; ++row) {
        if (row->pcRecord == nullptr || strcmp(row->pcRecord, record) == 0)
            return row->plain;
    }
    return {nullptr, ""};
}
