// SPDX-License-Identifier: Apache-2.0
// Walking a document value by value, places and paths of values, and the keys that nobody read.
#include "support/recording_base.h"
#include "support/tree_check.h"

#include <gtest/gtest.h>

namespace {

constexpr char Document[] = "base: &b {x: 1, y: 2}\n"         // 1
                            "m: {<<: *b, y: [7, 8], z: {}}\n" // 2
                            "l:\n"                            // 3
                            "  - {k: v, 'a.b': w, '': e}\n"   // 4
                            "  - [p, [q]]\n"                  // 5
                            "  - *b\n";                       // 6

struct Loaded {
    YamlHandle *pstHandle = ZRYAML_TextLoad(Document, sizeof(Document) - 1, "doc");
    ~Loaded() { ZRYAML_HandleFree(pstHandle); }
    Loaded() = default;
    Loaded(const Loaded &) = delete;
    Loaded &operator=(const Loaded &) = delete;
};

// The walk's own picture of a value: "type@line:column path key=..." lines, depth first.
void Picture(const YamlListNode *pstValue, std::string &text)
{
    uint32_t uiLine = 0, uiColumn = 0, uiSeen = 0;
    char acPath[64];
    ZRYAML_ValuePositionGet(pstValue, &uiLine, &uiColumn);
    EXPECT_LT(ZRYAML_ValuePathGet(pstValue, sizeof(acPath), acPath), sizeof(acPath));
    const char *pcText = ZRYAML_ValueTextGet(pstValue);
    text += std::to_string(uiLine) + ":" + std::to_string(uiColumn) + " " + acPath + " " +
            "SML"[(ZRYAML_ValueTypeGet(pstValue) + 1) % 3] + (pcText != nullptr ? std::string("=") + pcText : "") +
            "\n";
    YamlChild stChild = {}, stSame = {};
    while (ZRYAML_ChildNextGet(pstValue, &stChild) == YAML_OK) {
        EXPECT_EQ(ZRYAML_ChildGet(pstValue, uiSeen, &stSame), YAML_OK);
        EXPECT_EQ(stSame.pstValue, stChild.pstValue);
        EXPECT_EQ(stChild.uiIndex, uiSeen++);
        const std::string key = stChild.pcKey != nullptr ? stChild.pcKey : "";
        const YamlListNode *pstByKey = ZRYAML_ChildFind(pstValue, key.data(), key.size());
        EXPECT_EQ(pstByKey, stChild.pcKey != nullptr ? stChild.pstValue : nullptr);
        Picture(stChild.pstValue, text);
    }
    EXPECT_EQ(ZRYAML_ChildCountGet(pstValue), uiSeen);
    EXPECT_EQ(ZRYAML_ChildGet(pstValue, uiSeen, &stSame), YAML_ERR_ITER_END);
}

std::string UnreadText(YamlHandle *pstHandle)
{
    std::string text;
    YamlUnreadKey stKey = {};
    while (ZRYAML_UnreadKeyNext(pstHandle, &stKey) == YAML_OK)
        text += std::string(stKey.acPath) + "@" + std::to_string(stKey.uiLine) + (stKey.uiFromAlias != 0 ? "* " : " ");
    return text;
}

} // namespace

TEST(ValueWalk, ShowsTheDocumentAsItReads)
{
    const Loaded stLoaded;
    std::string text;
    Picture(ZRYAML_RootGet(stLoaded.pstHandle), text);
    // A sequence starts at its bracket, a block collection at its first entry, a copy at its alias.
    EXPECT_EQ(text, "1:1  L\n1:7 base L\n1:14 base.x S=1\n1:20 base.y S=2\n"
                    "2:4 m L\n2:9 m.x S=1\n2:16 m.y M\n2:17 m.y[0] S=7\n2:20 m.y[1] S=8\n2:27 m.z L\n"
                    "4:3 l M\n4:5 l[0] L\n4:9 l[0].k S=v\n4:19 l[0].a\\.b S=w\n4:26 l[0].{} S=e\n"
                    "5:5 l[1] M\n5:6 l[1][0] S=p\n5:9 l[1][1] M\n5:10 l[1][1][0] S=q\n"
                    "6:5 l[2] L\n6:5 l[2].x S=1\n6:5 l[2].y S=2\n");
    EXPECT_EQ(ZRYAML_DocumentGet(ZRYAML_ValueFind(stLoaded.pstHandle, "l[1][1]")), stLoaded.pstHandle);
    EXPECT_EQ(Base().lBlocks > 0, true);
}

TEST(ValueWalk, FindsKindAndPlace)
{
    const Loaded stLoaded;
    struct {
        const char *pcPath;
        uint32_t uiType, uiLine, uiColumn;
    } const astCases[] = {{"m.y", YAML_DATATYPE_SEQ, 2, 16},           {"m", YAML_DATATYPE_MAP, 2, 4},
                          {"l[0].a\\.b", YAML_DATATYPE_SCALAR, 4, 19}, {"l[0].{}", YAML_DATATYPE_SCALAR, 4, 26},
                          {"l[2]", YAML_DATATYPE_MAP, 6, 5},           {"m.none", YAML_DATATYPE_NONE, 0, 0}};
    for (const auto &stCase : astCases) {
        SCOPED_TRACE(stCase.pcPath);
        uint32_t uiLine = 0, uiColumn = 0;
        const bool bThere = stCase.uiType != YAML_DATATYPE_NONE;
        EXPECT_EQ(ZRYAML_TypeGet(stLoaded.pstHandle, "%s", stCase.pcPath), stCase.uiType);
        EXPECT_EQ(ZRYAML_PositionGet(stLoaded.pstHandle, &uiLine, &uiColumn, "%s", stCase.pcPath),
                  bThere ? YAML_OK : YAML_ERR_NOT_FOUND);
        EXPECT_EQ(uiLine, stCase.uiLine);
        EXPECT_EQ(uiColumn, stCase.uiColumn);
        EXPECT_EQ(ZRYAML_PathFind(stLoaded.pstHandle, stCase.pcPath) != nullptr, bThere);
    }
    uint32_t uiLine = 7;
    EXPECT_EQ(ZRYAML_PositionGet(stLoaded.pstHandle, &uiLine, nullptr, "m"), YAML_ERR_PARAM);
    EXPECT_EQ(uiLine, 7U);
    EXPECT_EQ(ZRYAML_PathFind(stLoaded.pstHandle, nullptr), nullptr);
    EXPECT_EQ(ZRYAML_PathFind(stLoaded.pstHandle, "m.x.1"), nullptr); // ends with the value's text
    EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, YAML_ERR_EMPTY);
    EXPECT_EQ(ZRYAML_PathFind(stLoaded.pstHandle, "%s%n"), nullptr); // a text, not a format
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcKeyPath, "%s%n");
}

TEST(ValueWalk, NothingHasNoChildren)
{
    YamlChild stChild = {};
    char acPath[2] = "x";
    uint32_t uiLine = 1, uiColumn = 1;
    EXPECT_EQ(ZRYAML_ChildNextGet(nullptr, &stChild), YAML_ERR_ITER_END);
    EXPECT_EQ(ZRYAML_ChildNextGet(nullptr, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ChildGet(nullptr, 0, &stChild), YAML_ERR_ITER_END);
    EXPECT_EQ(ZRYAML_ChildGet(nullptr, 0, nullptr), YAML_ERR_PARAM);
    EXPECT_EQ(ZRYAML_ChildCountGet(nullptr), 0U);
    EXPECT_EQ(ZRYAML_ChildFind(nullptr, "a", 1), nullptr);
    EXPECT_EQ(ZRYAML_ValueTypeGet(nullptr), YAML_DATATYPE_NONE);
    EXPECT_EQ(ZRYAML_ValueTextGet(nullptr), nullptr);
    EXPECT_EQ(ZRYAML_RootGet(nullptr), nullptr);
    EXPECT_EQ(ZRYAML_DocumentGet(nullptr), nullptr);
    EXPECT_STREQ(ZRYAML_NameGet(nullptr), "");
    EXPECT_EQ(ZRYAML_ValuePathGet(nullptr, 2, acPath), 0U);
    EXPECT_STREQ(acPath, "");
    ZRYAML_ValuePositionGet(nullptr, &uiLine, &uiColumn);
    EXPECT_EQ(uiLine + uiColumn, 0U);
}

TEST(UnreadKey, ListsWhatNobodyTouched)
{
    const Loaded stLoaded;
    YamlHandle *pstHandle = stLoaded.pstHandle;
    YamlUnreadKey stKey = {};
    EXPECT_EQ(ZRYAML_UnreadKeyNext(pstHandle, &stKey), YAML_ERR_SWITCH_OFF);
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "m.x"), "1"); // not marked: the switch is off
    ZRYAML_DebugSwitchSet(1);
    EXPECT_EQ(ZRYAML_UnreadKeyNext(nullptr, &stKey), YAML_ERR_PARAM);
    EXPECT_EQ(UnreadText(pstHandle), "m@2 l@3 "); // "base" is a template
    EXPECT_STREQ(ZRYAML_PropertyGet(pstHandle, "l[0].k"), "v");
    EXPECT_EQ(UnreadText(pstHandle), "m@2 l[0].a\\.b@4 l[0].{}@4 l[2].x@6* l[2].y@6* ");
    EXPECT_EQ(ZRYAML_ArraySizeGet(pstHandle, "m.y"), 2U); // an overridden key has the place of its own line
    EXPECT_EQ(UnreadText(pstHandle).substr(0, 13), "m.x@2* m.z@2 ");
    YamlIterator *pstIter = yaml_IteratorCreate(pstHandle, "l[2]");
    EXPECT_EQ(pstIter, nullptr);
    YamlChild stChild = {};
    EXPECT_EQ(ZRYAML_ChildGet(ZRYAML_ValueFind(pstHandle, "l[2]"), 1, &stChild), YAML_OK);
    EXPECT_EQ(ZRYAML_PropertyGet(pstHandle, "absent"), nullptr);
    EXPECT_EQ(UnreadText(pstHandle), "m.x@2* m.z@2 l[0].a\\.b@4 l[0].{}@4 l[2].x@6* ");

    const std::string key(900, 'k'); // a path that does not fit ends with dots
    const std::string text = key + ": {" + key + ": {a: 1, b: 2}}\n";
    YamlHandle *pstLong = ZRYAML_TextLoad(text.data(), text.size(), "");
    const YamlListNode *pstInner = ZRYAML_ChildFind(ZRYAML_ValueFind(pstLong, "%s", key.c_str()), key.c_str(), 900);
    EXPECT_STREQ(ZRYAML_ValueTextGet(ZRYAML_ChildFind(pstInner, "a", 1)), "1");
    EXPECT_EQ(UnreadText(pstLong), (key + "." + key).substr(0, 1020) + "...@1 ");
    ZRYAML_HandleFree(pstLong);
    ZRYAML_DebugSwitchSet(0);
}
