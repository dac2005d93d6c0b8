// SPDX-License-Identifier: Apache-2.0
// Documents of a schema: files and texts, the meta-schema, and the check by it that each document must pass.
#include "build.h"

#include "keyword.h"
#include "run.h"
#include "uri.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <sys/stat.h>

namespace zryaml::schema {

namespace {

struct FileClose {
    void operator()(FILE *file) const noexcept { (void)fclose(file); }
};
struct TextFree {
    void operator()(char *text) const noexcept { free(text); }
};

constexpr std::string_view Blank = " \t\r\n";

// What is left of a text without its byte order mark, comments and blanks, if that is "true" or "false": a schema that
// the loader would refuse as a document.
std::string_view BooleanSchema(std::string_view text) noexcept
{
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(Blank), text.size()));
        if (!text.starts_with('#'))
            break;
        text.remove_prefix(std::min(text.find('\n'), text.size()));
    }
    for (const std::string_view word : {"true", "false"}) {
        if (text.starts_with(word) && text.find_first_not_of(Blank, word.size()) == std::string_view::npos)
            return word;
    }
    return {};
}

// The beginning of a regular file; empty if it is longer than a schema without keywords needs to be.
std::string ShortFileRead(const char *path)
{
    struct stat status = {};
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    const std::unique_ptr<FILE, FileClose> file(fopen(path, "rbe"));
    std::array<char, 4096> bytes = {};
    const size_t length = file != nullptr ? fread(bytes.data(), 1, bytes.size(), file.get()) : 0;
    return length < bytes.size() ? std::string(bytes.data(), length) : std::string();
}

std::string RealPath(const std::string &path)
{
    const std::unique_ptr<char, TextFree> real(realpath(path.c_str(), nullptr));
    return real != nullptr ? std::string(real.get()) : std::string();
}

} // namespace

// Makes a problem of what the loader says.
void Build::LoadFault()
{
    const YamlErrorInfo &error = *ZRYAML_LastErrorGet();
    YamlProblem problem = {};
    problem.uiCode = error.uiCode;
    problem.uiLine = error.uiLine;
    problem.uiColumn = error.uiColumn;
    problem.uiFirstLine = error.uiFirstLine;
    problem.uiFirstColumn = error.uiFirstColumn;
    problem.pcSource = error.pcFile;
    problem.pcMessage = error.pcMessage;
    problem.pcHint = error.pcHint;
    (void)ZRYAML_ProblemReport(problems_, &problem);
    failed_ = true;
}

const YamlListNode *Build::Loaded(Document document)
{
    if (document == nullptr) {
        LoadFault();
        return nullptr;
    }
    const YamlListNode *root = ZRYAML_RootGet(document.get());
    if (root == nullptr) {
        YamlProblem problem = {};
        problem.uiCode = YAML_ERR_SCHEMA;
        problem.pcSource = ZRYAML_NameGet(document.get());
        problem.pcMessage = "the schema is empty: it must be a map, true or false";
        (void)ZRYAML_ProblemReport(problems_, &problem);
        failed_ = true;
        return nullptr;
    }
    made_.documents.push_back(std::move(document));
    return root;
}

const YamlListNode *Build::TextLoad(std::string_view text, const char *name)
{
    const std::string_view word = BooleanSchema(text);
    if (word.empty())
        return Loaded(Document(ZRYAML_TextLoad(text.data(), text.size(), name)));
    const std::string list = "[" + std::string(word) + "]";
    const YamlListNode *root = Loaded(Document(ZRYAML_TextLoad(list.data(), list.size(), name)));
    YamlChild child = YAML_CHILD_INIT;
    (void)ZRYAML_ChildNextGet(root, &child);
    return child.pstValue;
}

const YamlListNode *Build::FileLoad(const std::string &path)
{
    const std::string beginning = ShortFileRead(path.c_str());
    return BooleanSchema(beginning).empty() ? Loaded(Document(ZRYAML_FileLoad(path.c_str())))
                                            : TextLoad(beginning, path.c_str());
}

bool Build::MetaLoad()
{
    const std::string text = MetaSchemaText();
    const YamlListNode *root = TextLoad(text, MetaSchemaUri);
    if (root == nullptr)
        return false;
    IdsCollect(root, MetaSchemaUri);
    meta_ = Below(root);
    Drain();
    return !failed_;
}

bool Build::IsDraft7(const YamlListNode *root)
{
    const YamlListNode *dialect = ChildOf(root, "$schema");
    const std::string_view uri = FragmentSplit(TextOf(dialect)).document;
    if (uri.empty() || uri == MetaSchemaUri || uri == "https://json-schema.org/draft-07/schema")
        return true;
    const size_t draft = uri.find("/draft");
    const size_t end = draft != std::string_view::npos ? uri.find("/schema", draft) : draft;
    const bool isOfficial = uri.find("//json-schema.org/") != std::string_view::npos && end != std::string_view::npos;
    std::string name(isOfficial ? uri.substr(draft + 1, end - draft - 1) : uri);
    if (const size_t slash = name.find('/'); isOfficial && slash != std::string::npos)
        name[slash] = ' '; // "draft/2020-12"
    Fault(dialect,
          isOfficial ? "the schema is one of " + name + ", and only draft-07 is understood"
                     : "the schema follows " + Quoted(uri) + ", and only draft-07 is understood",
          "draft-07 is named \"http://json-schema.org/draft-07/schema#\"");
    return false;
}

bool Build::MetaCheck(const YamlListNode *node)
{
    Run run(node);
    Findings findings = run.Whole(*meta_);
    const bool isSchema = findings.IsEmpty();
    failed_ = failed_ || !isSchema;
    faults_.Append(std::move(findings));
    return isSchema;
}

bool Build::DocumentAdd(const YamlListNode *root, const std::string &uri)
{
    if (!IsDraft7(root) || !MetaCheck(root))
        return false;
    resources_.insert_or_assign(uri, root);
    IdsCollect(root, uri);
    return true;
}

bool Build::FileCompile(const char *path)
{
    const YamlListNode *root = MetaLoad() ? FileLoad(path) : nullptr;
    if (root == nullptr)
        return false;
    const std::string real = RealPath(path);
    const std::string uri = "file://" + PercentEncoded(real);
    folder_ = real.substr(0, real.rfind('/') + 1);
    prefixes_.emplace_back(UriFolder(uri));
    return Compile(root, uri);
}

bool Build::TextCompile(std::string_view text, const char *name)
{
    const YamlListNode *root = MetaLoad() ? TextLoad(text, name) : nullptr;
    return root != nullptr && Compile(root, "schema:");
}

} // namespace zryaml::schema
