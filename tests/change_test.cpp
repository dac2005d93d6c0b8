// SPDX-License-Identifier: Apache-2.0
// What differs between two documents.
#include "support/load_text.h"

#include <zr_yaml_layers.h>

namespace {

struct Changes : Recorded {};

struct ChangeCase {
    int iLine;
    const char *pcOld, *pcNew, *pcChanges;
};

const ChangeCase g_changes[] = {
    {__LINE__, "", "", ""},
    {__LINE__, "{a: 1}", "", "-a=1"},
    {__LINE__, "", "[{a: 1}, []]", "+[0].a=1 +[1]"},
    {__LINE__, "{a: 1, b: 2, c: 3}", "{c: 3, a: '1', b: 2}", ""},
    {__LINE__, "{x: 0, a: 1, y: {z: 1, w: []}, b: 2, q: 1}", "{n: 1, b: 3, a: 1, m: {}}",
     "-x=0 +n=1 ~b=2>3 -q=1 -y.z=1 -y.w +m"},
    {__LINE__, "{s: [1, 2, 3], t: [1], m: {}, e: []}", "{s: [1, 4], t: [1, {u: v}], m: {n: }, e: {}}",
     "~s[1]=2>4 -s[2]=3 +t[1].u=v +m.n= -e +e"},
    {__LINE__, "{a: {b: {c: 1}}, d: 1}", "{a: {b: x}, d: 2}", "-a.b.c=1 +a.b=x ~d=1>2"},
    {__LINE__, "{x: &x {p: 1, q: 2}, a: {<<: *x , p: 3}}", "{x: {p: 1, q: 2}, a: {p: 4, q: 2}}", "~a.p=3>4"},
    {__LINE__, "[1, 2]", "{a: 1}", "-[0]=1 -[1]=2 +a=1"},
};

TEST_F(Changes, AreTheInnermostValuesThatDiffer)
{
    for (const ChangeCase &stCase : g_changes) {
        YamlHandle *pstOld = TextLoad(stCase.pcOld), *pstNew = TextLoad(stCase.pcNew);
        YamlChange stChange = YAML_CHANGE_INIT;
        std::string text;
        while (ZRYAML_ChangeNext(pstOld, pstNew, &stChange) == YAML_OK) {
            const YamlListNode *pstValue = stChange.pstNew != nullptr ? stChange.pstNew : stChange.pstOld;
            char acPath[100];
            (void)ZRYAML_ValuePathGet(pstValue, sizeof(acPath), acPath);
            text.append(text.empty() ? "" : " ").append(1, " +-~"[stChange.uiKind]).append(acPath);
            if (const char *pcText = ZRYAML_ValueTextGet(pstValue))
                text.append(stChange.uiKind == YAML_CHANGE_CHANGED
                                ? std::string("=") + ZRYAML_ValueTextGet(stChange.pstOld) + '>'
                                : "=")
                    .append(pcText);
        }
        EXPECT_EQ(text, stCase.pcChanges) << "line " << stCase.iLine;
        EXPECT_EQ(ZRYAML_ChangeNext(pstOld, pstNew, &stChange), YAML_ERR_ITER_END) << "line " << stCase.iLine;
        ZRYAML_HandleFree(pstOld);
        ZRYAML_HandleFree(pstNew);
    }
}

} // namespace
