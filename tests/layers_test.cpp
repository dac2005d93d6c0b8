// SPDX-License-Identifier: Apache-2.0
// Layers put over each other: what comes out, what is refused and where, and where each value came from.
#include "support/layer_stack.h"
#include "support/load_text.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <zr_yaml/layers.hpp>

namespace {

using namespace std::string_literals;

struct Layers : Recorded {};

struct StackCase {
    int iLine;
    std::vector<std::string> layers;
    std::string expected; // the tree, and what is told
    uint32_t uiFlags = 0;
};

constexpr uint32_t X = YAML_LAYERS_EXPAND, M = YAML_LAYERS_MERGE_FORMS;

const StackCase g_stacks[] = {
    // Maps by key, all else as a whole; an old key keeps its place; an empty value leaves a collection.
    {__LINE__, {}, ""},
    {__LINE__,
     {"{b: 1, a: {x: 1, y: [1]}}", "", "{c: 3, a: {y: [2], z: , x: }, b: 2}"},
     R"({"b":"2","a":{"x":"","y":["2"],"z":""},"c":"3"})"},
    {__LINE__, {"{a: {x: 1}, b: [1]}", "{a: , b: ''}"}, R"({"a":{"x":"1"},"b":""})"},
    {__LINE__, {"{a: 1}", "[1]", "{b: 2}"}, R"({"b":"2"})"},
    {__LINE__, {"", "[1]", "--set [1].k=v"}, R"(["1",{"k":"v"}])"},
    // A file's own merges come first, and a written key stays over a merged one.
    {__LINE__,
     {"{x: &x {p: 1, q: 2}, a: {<<: *x , p: 3}}", "{y: &y {q: 4, r: 5}, a: {<<: *y , q: 6}, b: {<<: *y , r: 7, q: 8}}"},
     R"({"x":{"p":"1","q":"2"},"a":{"p":"3","q":"6","r":"5"},"y":{"q":"4","r":"5"},"b":{"q":"8","r":"7"}})"},
    // Tags.
    {__LINE__,
     {"{a: [1], b: [2], m: {x: 1}, g: 1}",
      "{a: !append [3, 4], b: !prepend [5, 6], m: !replace {y: 2}, g: !unset , n: !unset , o: !append [7]}",
      "{a: !append [!append [8]]}"},
     R"({"a":["1","3","4",["8"]],"b":["5","6","2"],"m":{"y":"2"},"o":["7"]})"
     "\n-2:1:14: a[3]: '!append' means nothing here (these tags belong on the value of a key)"},
    {__LINE__,
     {"{a: {b: !unset 1, c: [{d: !unset , e: 1}]}, f: }", "{a: {c: !replace [{g: !unset }]}, f: !append [1]}"},
     R"({"a":{"c":[{}]},"f":["1"]})"},
    {__LINE__,
     {"{a: [1], b: 2}", "{a: !apend [3], b: !Unset x}"},
     R"({"a":["3"],"b":"x"})"
     "\n-1:1:5: a: this tag is unknown and ignored (did you mean '!append'?)"
     "\n-1:1:20: b: this tag is unknown and ignored (did you mean '!unset'?)"},
    {__LINE__,
     {"{a: {k: 1}, b: 2}", "{a: !append [1], b: !prepend [1], c: !append x}"},
     "\n1:1:5: a: '!append' joins sequences, but this is a map in 0, line 1"
     "\n1:1:21: b: '!prepend' joins sequences, but this is a scalar in 0, line 1"
     "\n1:1:38: c: '!append' takes a sequence, but this is a scalar (write the elements as a sequence: [a, b])"},
    // Assignments.
    {__LINE__,
     {"{a: {b: [1]}, 'x.y': 1, p: old}", "--set a.b[1].c=v", "--set {x.y}=2=3", "--set a\\=b.{c=d}=", "--set n\\.m.k=",
      "--set l[0][0]=z", "--set p=[no", "--set q=[1, {r: s}]", "--set a={t: u}"},
     R"({"a":{"b":["1",{"c":"v"}],"t":"u"},"x.y":"2=3","p":"[no","a=b":{"c=d":""},"n.m":{"k":""},"l":[["z"]],"q":["1",{"r":"s"}]})"},
    {__LINE__,
     {"{a: [1], b: {c: d}}", "--set a[2]=x", "--set a.b=x", "--set b.c.d=x", "--set b[0]=1", "--set a\\", "--set =1",
      "--set a[x]=1", "--set n=[1", "--set b.c=\xFF"},
     "\n--set a[2]: a: the index 2 is beyond the end: the sequence has 1 element"
     "\n--set a.b: a: a sequence stands in the way of the key 'b'"
     "\n--set b.c.d: b.c: a scalar stands in the way of the key 'd'"
     "\n--set b[0]: b: a map has no element 0"
     "\n--set: 'a\\' has no '=' (write it as path=text)"
     "\n--set: '=1' names no value (write it as path=text)"
     "\n--set a[x]: the key path is malformed: an index is not a number from 0 on"
     "\n--set n:1:1: the '[' that opens here is not closed (a ']' is missing)"
     "\n--set b.c: the assignment is not valid UTF-8"},
    // Variables.
    {__LINE__,
     {"{servers: [{port: 1}], log-level: x, Mixed: 1, e: }", "$APP_SERVERS__10=l", "$APP_SERVERS__0__PORT=80",
      "$APP_SERVERS__1=b", "$APP_SERVERS__02=c", "$APP_SERVERS__3=d", "$APP_SERVERS__4=e", "$APP_SERVERS__5=f",
      "$APP_SERVERS__6=g", "$APP_SERVERS__7=h", "$APP_SERVERS__8=i", "$APP_SERVERS__9=k", "$APP_LOG_LEVEL=[y",
      "$APP_MIXED=2", "$APP_NEW__0=n", "$OTHER=1", "$APP_E__F=g"},
     R"({"servers":[{"port":"80"},"b","c","d","e","f","g","h","i","k","l"],"log-level":"[y","Mixed":"2","e":{"f":"g"},"new":{"0":"n"}})"},
    {__LINE__,
     {"{a-b: 1, a.b: 2, s: [1], k: 1}", "$APP_A_B=1", "$APP_S__X=1", "$APP_K=1", "$APP_k=2", "$APP_X____Y=1", "$APP_=1",
      "$APP_K__L=1", "$APP_Z=\xC0\x80"},
     "\nenvironment APP_: a component of the name is empty"
     "\nenvironment APP_A_B: the name means both 'a-b' and 'a.b'"
     "\nenvironment APP_K__L: k: a scalar stands in the way of the key 'l'"
     "\nenvironment APP_S__X: s: a sequence has no element 'X'"
     "\nenvironment APP_X____Y: a component of the name is empty"
     "\nenvironment APP_Z: the variable is not valid UTF-8"
     "\nenvironment APP_k: k: the value is set by environment APP_K already"},
    // Problems of all layers at once; what depends on a document that is not there is not judged.
    {__LINE__,
     {"{a: [1}", "{b: *x }", "{c: !append 1}", "--set a[7]=1", "--set q"},
     "\n0:1:7: this '}' does not close the '[' of line 1, column 5 (close it with ']')"
     "\n1:1:5: there is no anchor '&x' for this alias (write '&x' before it, on something that has ended; quote a text "
     "that begins with '*')"
     "\n2:1:5: c: '!append' takes a sequence, but this is a scalar (write the elements as a sequence: [a, b])"
     "\n--set: 'q' has no '=' (write it as path=text)"},
    // Merge forms: earlier maps win, written keys stay, a quoted "<<" is a key.
    {__LINE__,
     {"{x: &x {a: 1, b: 2}, s: &s [*x , {b: 3, c: 4}], m: {z: 0, <<: [*x , {d: 5, z: 6}], b: 7}, n: {<<: *s }, "
      "o: {<<: &i {q: 1}, r: *i }, p: {'<<': {k: v}}, t: {<<: [], <<: {}}}"},
     R"({"x":{"a":"1","b":"2"},"s":[{"a":"1","b":"2"},{"b":"3","c":"4"}],"m":{"z":"0","a":"1","b":"7","d":"5"},)"
     R"("n":{"a":"1","b":"2","c":"4"},"o":{"q":"1","r":{"q":"1"}},"p":{"<<":{"k":"v"}},"t":{}})",
     M},
    {__LINE__,
     {"{a: {<<: 1}}", "{a: {<<: [{}, 2]}}"},
     "\n0:1:10: '<<' cannot merge the text '1' into a map (what '<<' merges must be a map, or a sequence of maps)"
     "\n1:1:15: '<<' cannot merge the text '2' into a map (what '<<' merges must be a map, or a sequence of maps)",
     M},
    // Interpolation.
    {__LINE__,
     {"{a: '${b}', b: \"${HOST}:${c[0].d}\", c: [{d: \"$$5 $ ${NO_NE:-x}\"}], e: '${b}x', \"k.y\": 1}",
      "f: ${{k.y}}${key:k\\.y}${ZERO:-z}${ZERO}${env:o}", "--set g=${HOST}", "$HOST=h", "$ZERO=", "$o=o${HOST}"},
     R"({"a":"${b}","b":"h:$5 $ x","c":[{"d":"$5 $ x"}],"e":"${b}x","k.y":"1","f":"11zo${HOST}","g":"${HOST}"})",
     X},
    {__LINE__,
     {"{a: \"${b}\", b: \"${a}\", c: \"${N}\", d: \"${N:?give an N}\", e: \"${g.y}\", f: \"${g}\", g: [], h: \"${}\", "
      "i: \"${Z:?}\", j: \"x${\", k: \"${a[x}\", l: \"${B}\"}",
      "$Z=", "$B=\xF4\x90\x80\x80"},
     "\n0:1:16: b: '${a}' leads back to this text"
     "\n0:1:27: c: the environment variable 'N' is not set (a text to take instead is written ${name:-text})"
     "\n0:1:38: d: give an N"
     "\n0:1:60: e: the value at 'g.y' is not there (a text to take instead is written ${name:-text})"
     "\n0:1:73: f: the value at 'g' is no scalar (only the text of a scalar can be taken)"
     "\n0:1:91: h: '${}' names nothing (write '$$' for a dollar)"
     "\n0:1:101: i: the environment variable 'Z' is empty (a text to take instead is written ${name:-text})"
     "\n0:1:114: j: '${' is never closed (write '$$' for a dollar)"
     "\n0:1:124: k: 'a[x' is no key path"
     "\n0:1:137: l: the environment variable 'B' is not valid UTF-8",
     X},
};

TEST_F(Layers, GiveWhatTheirRulesSay)
{
    for (const StackCase &stCase : g_stacks)
        EXPECT_EQ(LayerStack(stCase.layers, stCase.uiFlags).Read(), stCase.expected) << "line " << stCase.iLine;
}

// Each place of a value, the newest first: "source:line:column=text".
std::string OriginsText(YamlHandle *pstHandle, const char *pcPath)
{
    const YamlListNode *pstValue = pcPath[0] != '\0' ? ZRYAML_PathFind(pstHandle, pcPath) : ZRYAML_RootGet(pstHandle);
    YamlOrigin stOrigin = YAML_ORIGIN_INIT;
    std::string text;
    for (uint32_t ui = 0; ZRYAML_OriginGet(pstValue, ui, &stOrigin) == YAML_OK; ++ui) {
        text.append(ui > 0 ? " " : "").append(stOrigin.pcSource);
        text += '/' + std::to_string(stOrigin.uiLayer) + ':' + std::to_string(stOrigin.uiLine) + ':' +
                std::to_string(stOrigin.uiColumn) + '=' + (stOrigin.pcText != nullptr ? stOrigin.pcText : "-");
    }
    return text;
}

TEST_F(Layers, TellWhereEachValueCameFrom)
{
    const LayerStack stStack({"{a: 1, m: {k: 1}, s: [x], r: 1}",
                              "{a: 2,\n m: {l: \"${a}\"}, s: !append [y], r: {q: 1}}", "{a: 3, s: [z], r: {q: [2]}}",
                              "$APP_A=4", "--set a=5", "--set s[0]={t: u}"},
                             X);
    YamlHandle *pstHandle = stStack.Load(nullptr);
    const std::pair<const char *, const char *> expected[] = {
        {"", "0/0:1:1=-"},
        {"a", "--set a/4:0:0=5 environment APP_A/3:0:0=4 2/2:1:5=3 1/1:1:5=2 0/0:1:5=1"},
        {"m", "0/0:1:11=-"},
        {"m.l", "1/1:2:9=5"},
        {"s", "2/2:1:11=- 0/0:1:22=-"},
        {"s[0]", "--set s[0]/5:0:0={t: u} 2/2:1:12=z"},
        {"r", "1/1:2:37=- 0/0:1:30=1"},
        {"r.q", "2/2:1:23=- 1/1:2:41=1"},
    };
    for (const auto &[pcPath, pcOrigins] : expected)
        EXPECT_EQ(OriginsText(pstHandle, pcPath), pcOrigins) << pcPath;
    const YamlListNode *pstScalar = ZRYAML_PathFind(pstHandle, "m.l");
    EXPECT_EQ(ZRYAML_ReferenceGet(pstScalar, 0), ZRYAML_PathFind(pstHandle, "a"));
    EXPECT_EQ(ZRYAML_ReferenceGet(pstScalar, 1), nullptr);
    EXPECT_EQ(ZRYAML_ValueStyleGet(pstScalar), YAML_STYLE_PLAIN);
    EXPECT_EQ(ZRYAML_PropertyGet(pstHandle, "r.q"), nullptr);
    EXPECT_STREQ(ZRYAML_LastErrorGet()->pcFile, "2");
    ZRYAML_HandleFree(pstHandle);
    YamlHandle *pstAlone = TextLoad("{a: 1}");
    EXPECT_EQ(OriginsText(pstAlone, "a"), "doc/0:1:5=1");
    ZRYAML_HandleFree(pstAlone);
}

struct Folder { // with everything in it gone at the end
    Folder() { EXPECT_NE(mkdtemp(path.data()), nullptr); }
    ~Folder() { std::filesystem::remove_all(path); }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;
    void Write(const std::string &name, const char *pcText) const { std::ofstream(path + '/' + name) << pcText; }
    std::string path = "/tmp/zryaml_layers_XXXXXX";
};

TEST_F(Layers, AreFilesAndFolders)
{
    const Folder stFolder;
    for (const char *pcName : {"b.yaml", "B.yml", "a.yaml", ".c.yaml", "d.yaml~", "e.txt", "yaml"})
        stFolder.Write(pcName, (std::string("l: !append [") + pcName + "]").c_str());
    const std::string one = stFolder.path + "/a.yaml", none = stFolder.path + "/none";
    const auto Read = [&](std::vector<YamlLayer> layers) {
        YamlProblems *pstProblems = nullptr;
        YamlHandle *pst = ZRYAML_LayersLoad(layers.data(), static_cast<uint32_t>(layers.size()), nullptr, &pstProblems);
        const std::string text = (pst != nullptr ? TreeText(*pst) : "") + ProblemsText(pstProblems);
        ZRYAML_ProblemsFree(pstProblems);
        ZRYAML_HandleFree(pst);
        return std::regex_replace(text, std::regex(stFolder.path), "F");
    };
    const auto Layer = [](uint32_t uiKind, const std::string &path) {
        return YamlLayer{uiKind, 0, path.c_str(), nullptr, 0, nullptr};
    };
    EXPECT_EQ(Read({Layer(YAML_LAYER_FOLDER, stFolder.path), Layer(YAML_LAYER_FILE_OPTIONAL, one),
                    Layer(YAML_LAYER_FILE_OPTIONAL, none), Layer(YAML_LAYER_FOLDER_OPTIONAL, none),
                    Layer(YAML_LAYER_FILE, one)}),
              R"({"l":["B.yml","a.yaml","b.yaml","a.yaml","a.yaml"]})");
    stFolder.Write("c.yaml", "l: [");
    EXPECT_EQ(
        Read({Layer(YAML_LAYER_FOLDER, stFolder.path), Layer(YAML_LAYER_FILE, none), Layer(YAML_LAYER_FOLDER, none)}),
        "\nF/c.yaml:1:4: the '[' that opens here is not closed (a ']' is missing)\nF/none: no such file\nF/none: no "
        "such folder");
}

TEST_F(Layers, GiveEverythingBackWhereMemoryIsShort)
{
    const LayerStack stStack({"{a: 1, m: {k: 1, l: [1]}, e: }",
                              "{a: {b: 2}, m: {k: !replace {x: \"${n.m}\"}, l: !append [2]}}", "$APP_M__L=[5, {q: r}]",
                              "$APP_M__NEW__X=y", "--set m.l[2]=3", "--set n={m: 1}", "--set e.f=1"},
                             X | M);
    const std::string whole = stStack.Read();
    std::string read;
    uint64_t ulFail = 0;
    do {
        Base().Reset();
        Base().ulFailAllocation = ++ulFail;
        read = stStack.Read();
        EXPECT_TRUE(read == whole || read.find("memory") != read.npos) << ulFail << read;
        EXPECT_EQ(Base().lBlocks, 0) << ulFail;
    } while (Base().ulAllocations >= ulFail);
    EXPECT_EQ(read, whole);
    EXPECT_GT(ulFail, 20U);
}

TEST_F(Layers, AreBounded)
{
    YamlLimits stBefore = YAML_LIMITS_INIT;
    ZRYAML_LimitsGet(&stBefore);
    YamlLimits stLimits = stBefore;
    stLimits.ulCopyBytes = 10000;
    (void)ZRYAML_LimitsSet(&stLimits);
    std::vector<std::string> many(1000, "{a: 1}"), variables, bomb = {"{a: xxxxxxxx,"}, chain = {"{"};
    EXPECT_EQ(LayerStack(many).Read(), R"({"a":"1"})");
    many.emplace_back("");
    EXPECT_EQ(LayerStack(many).Read(), "\n: there are 1001 layers, but at most 1000 can be loaded");
    for (uint32_t ui = 0; ui < 1001; ++ui)
        variables.push_back("$APP_V" + std::to_string(ui) + "=1");
    EXPECT_NE(LayerStack(variables).Read().find("there are more than 1000 files, variables and assignments in all"),
              std::string::npos);
    std::string deep = "$APP_A";
    for (uint32_t ui = 0; ui < 600; ++ui)
        deep += "__A";
    EXPECT_NE(LayerStack({deep + "=1"}).Read().find("has too many components"), std::string::npos);
    deep = std::string(1000, '[') + std::string(1000, ']');
    EXPECT_NE(LayerStack({"--set a.b=" + deep}).Read().find("nested"), std::string::npos);
    for (char c = 'b'; c < 'z'; ++c)
        bomb[0]
            .append(1, c)
            .append(": \"${")
            .append(1, static_cast<char>(c - 1))
            .append("}${")
            .append(1, static_cast<char>(c - 1))
            .append("}\",");
    EXPECT_NE(
        LayerStack({bomb[0] + '}'}, X).Read().find("interpolation makes too much text (the limit is ulCopyBytes)"),
        std::string::npos);
    for (uint32_t ui = 0; ui < 300; ++ui)
        chain[0] += "k" + std::to_string(ui) + ": \"${k" + std::to_string(ui + 1) + "}\",";
    EXPECT_NE(LayerStack({chain[0] + "k300: x}"}, X).Read().find("too long a chain"), std::string::npos);
    std::string far = "{s: [x", references;
    for (uint32_t ui = 0; ui < 9000; ++ui) {
        far += ",x";
        references += "\"${s[4500]}\",";
    }
    far += "], r: [" + references;
    EXPECT_NE(LayerStack({far + "]}"}, X).Read().find("lead through too many elements"), std::string::npos);
    (void)ZRYAML_LimitsSet(&stBefore);
}

YamlField Field(const char *pcKey, uint32_t uiKind, const YamlRecord *pstRecord = nullptr)
{
    YamlField stField{};
    stField.pcKey = pcKey;
    stField.uiKind = uiKind;
    stField.pstRecord = pstRecord;
    return stField;
}

template <size_t Count> YamlRecord Record(const YamlField (&astFields)[Count])
{
    YamlRecord stRecord{};
    stRecord.uiSize = sizeof(YamlRecord);
    stRecord.uiFieldSize = sizeof(YamlField);
    stRecord.uiFields = Count;
    stRecord.pstFields = astFields;
    return stRecord;
}

TEST_F(Layers, TakeVariablesByADescription)
{
    const YamlField astTls[] = {Field("key-file", YAML_KIND_TEXT), Field("min.version", YAML_KIND_TEXT)};
    const YamlRecord stTls = Record(astTls);
    const YamlAlternative stAlternative = {"file", &stTls, nullptr};
    YamlField astFields[] = {Field("tls", YAML_KIND_RECORD, &stTls),
                             Field("peers", YAML_KIND_ARRAY, &stTls),
                             Field("labels", YAML_KIND_MAP),
                             Field("maxSize", YAML_KIND_BYTES),
                             Field("more", YAML_KIND_OPTIONAL, &stTls),
                             Field("any", YAML_KIND_CUSTOM),
                             Field("sink", YAML_KIND_UNION)};
    astFields[6].pstAlternatives = &stAlternative;
    astFields[6].uiAlternatives = 1;
    const YamlRecord stRecord = Record(astFields);
    const LayerStack stStack({"{tls: , own: {x: 1}}", "$APP_TLS__KEY_FILE=[a", "$APP_TLS__MIN_VERSION=1",
                              "$APP_PEERS__0__KEY_FILE=p", "$APP_PEERS__1={min.version: 2}", "$APP_LABELS__A_B=l",
                              "$APP_MAXSIZE=1", "$APP_MORE__KEY_FILE=m", "$APP_ANY__THING__0=t", "$APP_SINK__TYPE=file",
                              "$APP_SINK__KEY_FILE=s", "$APP_OWN__X=2", "$APP_TLS__FILE=x", "$APP_DIR=x",
                              "$APP_MAXSIZE__X=x", "$APP__=x", "$APP_PEERS__X=x"},
                             0, &stRecord);
    EXPECT_EQ(
        stStack.Read(),
        R"({"tls":{"key-file":"[a","min.version":"1"},"own":{"x":"2"},"any":{"thing":{"0":"t"}},"labels":{"a_b":"l"},)"
        R"("maxSize":"1","more":{"key-file":"m"},"peers":[{"key-file":"p"},{"min.version":"2"}],"sink":{"key-file":"s","type":"file"}})"
        "\n-environment APP_DIR: there is no key like 'DIR' (the variable is ignored)"
        "\n-environment APP_MAXSIZE__X: maxSize: there is no key like 'X' (the variable is ignored)"
        "\n-environment APP_PEERS__X: peers: a sequence has no element 'X' (the variable is ignored)"
        "\n-environment APP_TLS__FILE: tls: there is no key like 'FILE' (the variable is ignored)"
        "\n-environment APP__: there is no key like '_' (the variable is ignored)");
}

TEST_F(Layers, AreTheSameInCxx)
{
    const Folder stFolder;
    stFolder.Write("a.yaml", "a: 1\nb: {c: \"${HOME}\", d: 2}\n");
    auto stLayers = zryaml::Layers()
                        .file(stFolder.path + "/a.yaml")
                        .optional(stFolder.path + "/none")
                        .folder(stFolder.path)
                        .text("{e: {<<: {f: 3}}}", "text")
                        .environment("APP_")
                        .set("b.d=4")
                        .expand()
                        .merge_forms()
                        .variables({"HOME=h", "APP_B__G=5"});
    const auto stLoaded = stLayers.load();
    ASSERT_TRUE(stLoaded) << stLoaded.error().what();
    EXPECT_EQ(TreeText(*stLoaded->handle()), R"({"a":"1","b":{"c":"h","d":"4","g":"5"},"e":{"f":"3"}})");
    const zryaml::Value stValue = (*stLoaded)["b"]["d"];
    EXPECT_EQ(stValue.origin()->what(), "--set b.d");
    EXPECT_EQ(stValue.origin(1)->what(), stFolder.path + "/a.yaml:2:22");
    EXPECT_EQ(stValue.origin(2)->text, "2"); // the folder has the file once more
    EXPECT_FALSE(stValue.origin(3) || zryaml::Value().origin());
    const auto stChanged = stLayers.set("a=6").load();
    const auto changes = zryaml::changes(*stLoaded, *stChanged);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].current.text(), "6");
    const auto stRefused = stLayers.set("a").set("b=x\0y"s).load();
    EXPECT_EQ(stRefused.error().what(), "--set: error: the layer holds a NUL character\n");
    EXPECT_EQ(zryaml::Layers().set("a").set("b").load().error().size(), 2U);
}

TEST_F(Layers, RefuseWhatIsNoLayer)
{
    const std::pair<YamlLayer, const char *> wrong[] = {
        {{9, 0, "x", nullptr, 0, nullptr}, "layer 1 is of no known kind"},
        {{YAML_LAYER_FILE, 0, nullptr, nullptr, 0, nullptr}, "layer 1 has no source"},
        {{YAML_LAYER_FILE, 1, "x", nullptr, 0, nullptr}, "layer 1 has flags or reserved members that are not 0"},
        {{YAML_LAYER_ENVIRONMENT, 0, "", nullptr, 0, nullptr}, "layer 1 has an empty prefix"},
        {{YAML_LAYER_ASSIGNMENT, 0, "--set", nullptr, 0, nullptr}, "layer 1 has no text"},
        {{YAML_LAYER_TEXT, 0, "x", nullptr, 1, nullptr}, "layer 1 has no text"},
    };
    for (const auto &[layer, message] : wrong) {
        const YamlLayer layers[] = {{YAML_LAYER_TEXT, 0, "x", "a: 1", 4, nullptr}, layer};
        YamlProblems *problems = nullptr;
        EXPECT_EQ(ZRYAML_LayersLoad(layers, 2, nullptr, &problems), nullptr);
        EXPECT_EQ(ZRYAML_ProblemCountGet(problems), 1U);
        EXPECT_EQ(std::string(ZRYAML_ProblemGet(problems, 0)->pcMessage).find(message), 0U) << message;
        EXPECT_EQ(ZRYAML_LastErrorGet()->uiCode, YAML_ERR_PARAM);
        ZRYAML_ProblemsFree(problems);
    }
    YamlLayerOptions options = YAML_LAYER_OPTIONS_INIT;
    options.uiFlags = 4;
    EXPECT_EQ(ZRYAML_LayersLoad(nullptr, 0, &options, nullptr), nullptr);
    EXPECT_EQ(ZRYAML_LayersLoad(nullptr, 1, nullptr, nullptr), nullptr);
}

} // namespace
