// SPDX-License-Identifier: Apache-2.0
// What the tests of queries share: two documents, the log of a failed lookup, and tables of paths with their outcome.
#pragma once

#include "recording_base.h"
#include "tree_check.h"

#include <span>

inline constexpr const char *MapDocument =
    R"({a: {b: x, c: [p, q, {r: s}], e: {}, f: , g: 8080, n: ~, z: "tab\tend"}, n: [[m0, m1], [m2]], mode: fast,
 emp: [], rows: [[1, 2], [], x, {k: v}], maps: [{k: v}], seqs: [[]], k.d: {x: below}, 'l[1]': y, ']z': y,
 'w\': y, 'w\x': y, 'a\.b': y, 'e}f': {g: y}, '[': y, '.d': y, '50%': r})";
inline constexpr const char *SeqDocument = "[{name: ann, v: [x, y]}, plain, [i0, i1], []]";

#define NOT_FOUND(name) "1 19000003 Can not find the yaml node with key. (Key=" name ")\n"
#define TOO_LONG "2 19000005 The input key is too long to format.\n"
#define LENGTH_0 "2 19000002 The length of key is 0.\n"

// A document from its text; at its end every block since then must be free. The records start anew behind both.
class Document {
public:
    Document(const char *pcText); // a text is taken for its document
    ~Document();
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;
    operator YamlHandle *() const { return m_pstHandle; }
    YamlHandle *operator->() const { return m_pstHandle; }

private:
    int64_t m_lBlocks;
    YamlHandle *m_pstHandle;
};

YamlListNode *NodeAt(YamlHandle *pstHandle, const char *pcPath);

// Paths with one outcome, written as one text: "=" and the text of the node found, or "#" in its place if an index
// selected it, where a map is "{}" and a sequence "[]"; "kept " if the flag was not stored; then the log, in which "~"
// stands for what the path has behind its last '['.
struct PathCase {
    const char *pcOutcome;
    const char *apcPath[8];
};
void PathsCheck(const Document &stDocument, std::span<const PathCase> astCases);
