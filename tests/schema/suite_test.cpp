// SPDX-License-Identifier: Apache-2.0
// The published draft-07 suite, read by the library itself: each schema as a file beside the suite's remote schemas,
// each instance as a value inside a YAML document. What is left out is named below, with the reason.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "schema_support.h"

namespace {

namespace fs = std::filesystem;

struct LeftOut {
    const char *file, *group, *reason; // group "": the whole file
};
constexpr LeftOut g_leftOut[] = {
    {"refRemote.json", "remote ref", "its schema has no $id, so only a network could tell where the file is"},
    {"refRemote.json", "fragment within remote ref", "as above"},
    {"refRemote.json", "ref within remote ref", "as above"},
    {"optional/content.json", "", "contentEncoding and contentMediaType describe and do not constrain"},
    {"optional/format/idn-email.json", "", "a format that is not checked"},
    {"optional/format/idn-hostname.json", "", "a format that is not checked"},
    {"optional/format/iri.json", "", "a format that is not checked"},
    {"optional/format/iri-reference.json", "", "a format that is not checked"},
    {"optional/format/relative-json-pointer.json", "", "a format that is not checked"},
    {"optional/format/uri-reference.json", "", "a format that is not checked"},
    {"optional/format/uri-template.json", "", "a format that is not checked"},
};

bool IsLeftOut(const std::string &file, const std::string &group)
{
    return std::ranges::any_of(g_leftOut, [&](const LeftOut &entry) {
        return file == entry.file && (*entry.group == '\0' || group == entry.group);
    });
}

std::string FileText(const fs::path &path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

// libyaml refuses the two halves of a character as escapes, which is how minLength.json and maxLength.json write it.
std::string WithoutSurrogates(std::string text)
{
    const std::string escape = "\\uD83D\\uDCA9";
    for (size_t at = text.find(escape); at != std::string::npos; at = text.find(escape, at))
        text.replace(at, escape.size(), "\xF0\x9F\x92\xA9");
    return text;
}

// A value as JSON, its numbers as they are written.
std::string Json(const YamlListNode *value)
{
    std::string text;
    YamlChild child = YAML_CHILD_INIT;
    const bool isMap = ZRYAML_ValueTypeGet(value) == YAML_DATATYPE_MAP;
    if (ZRYAML_ValueTypeGet(value) == YAML_DATATYPE_SCALAR) {
        text = ZRYAML_ValueTextGet(value);
        return ZRYAML_ValueStyleGet(value) == YAML_STYLE_PLAIN ? text : QuotedText(text);
    }
    while (ZRYAML_ChildNextGet(value, &child) == YAML_OK)
        text += (text.empty() ? "" : ", ") + (isMap ? QuotedText(child.pcKey) + ": " : "") + Json(child.pstValue);
    return isMap ? "{" + text + "}" : "[" + text + "]";
}

// Runs one file of the suite in a folder that holds the remote schemas.
void SuiteFileRun(const fs::path &path, const std::string &name, const fs::path &folder, size_t &run)
{
    const DocumentPtr suite = TextLoad(WithoutSurrogates(FileText(path)));
    ASSERT_NE(suite, nullptr) << name;
    YamlChild group = YAML_CHILD_INIT;
    while (ZRYAML_ChildNextGet(ZRYAML_RootGet(suite.get()), &group) == YAML_OK) {
        const std::string title = Text(group.pstValue, "description");
        if (IsLeftOut(name, title))
            continue;
        std::ofstream(folder / "under_test.json") << Json(Child(group.pstValue, "schema"));
        const Loaded schema = SchemaFileLoad(folder / "under_test.json");
        ASSERT_NE(schema.schema, nullptr) << name << ": " << title << "\n" << schema.problems;
        YamlChild test = YAML_CHILD_INIT;
        while (ZRYAML_ChildNextGet(Child(group.pstValue, "tests"), &test) == YAML_OK) {
            const std::string instance = Json(Child(test.pstValue, "data"));
            const DocumentPtr document = TextLoad("value: " + instance + "\n");
            ASSERT_NE(document, nullptr) << instance;
            const bool valid = Text(test.pstValue, "valid") == "true";
            const Checked checked = Check(schema, Child(ZRYAML_RootGet(document.get()), "value"));
            EXPECT_EQ(checked.code == YAML_OK, valid)
                << name << ": " << title << ": " << Text(test.pstValue, "description") << "\n"
                << instance << "\n"
                << checked.problems;
            EXPECT_EQ(checked.problems.empty(), valid) << name << ": " << title;
            ++run;
        }
    }
}

} // namespace

TEST(SchemaSuite, Draft7)
{
    const fs::path suite = ZRYAML_SCHEMA_SUITE;
    if (!fs::exists(suite / "tests/draft7"))
        GTEST_SKIP() << "script/bootstrap test installs the suite";
    const TemporaryFolder folder;
    fs::copy(suite / "remotes", folder.path, fs::copy_options::recursive);
    size_t run = 0;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(suite / "tests/draft7")) {
        if (entry.is_regular_file())
            SuiteFileRun(entry.path(), fs::relative(entry.path(), suite / "tests/draft7"), folder.path, run);
    }
    EXPECT_GT(run, 500U);
}
