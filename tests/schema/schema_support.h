// SPDX-License-Identifier: Apache-2.0
// Schemas, documents and what a check says, for the tests of the schema library.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include <zr_yaml_schema.h>

template <auto Free> struct FreeBy {
    template <class T> void operator()(T *object) const { Free(object); }
};
using DocumentPtr = std::unique_ptr<YamlHandle, FreeBy<ZRYAML_HandleFree>>;
using SchemaPtr = std::unique_ptr<YamlSchema, FreeBy<ZRYAML_SchemaFree>>;

struct TemporaryFolder {
    std::filesystem::path path;
    TemporaryFolder()
    {
        std::string name = std::filesystem::temp_directory_path() / "zryaml-XXXXXX";
        path = mkdtemp(name.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path); }
    TemporaryFolder(const TemporaryFolder &) = delete;
};

inline DocumentPtr TextLoad(const std::string &text)
{
    return DocumentPtr(ZRYAML_TextLoad(text.data(), text.size(), "doc.yaml"));
}

// A list as lines "line:column path: message (hint) from line:column", which it frees.
inline std::string Lines(YamlProblems *problems)
{
    std::string text;
    for (uint32_t index = 0; index < ZRYAML_ProblemCountGet(problems); ++index) {
        const YamlProblem &problem = *ZRYAML_ProblemGet(problems, index);
        text += std::to_string(problem.uiLine) + ":" + std::to_string(problem.uiColumn) + " " + problem.pcPath + ": " +
                problem.pcMessage + (*problem.pcHint != '\0' ? " (" + std::string(problem.pcHint) + ")" : "") +
                (problem.uiFirstLine == 0
                     ? ""
                     : " from " + std::to_string(problem.uiFirstLine) + ":" + std::to_string(problem.uiFirstColumn)) +
                "\n";
    }
    ZRYAML_ProblemsFree(problems);
    return text;
}

struct Loaded {
    SchemaPtr schema;
    std::string problems;
};
inline Loaded SchemaFileLoad(const std::string &path)
{
    YamlProblems *problems = nullptr;
    SchemaPtr schema(ZRYAML_SchemaLoad(path.c_str(), &problems));
    return {std::move(schema), Lines(problems)};
}
inline Loaded SchemaTextLoad(const std::string &text)
{
    YamlProblems *problems = nullptr;
    SchemaPtr schema(ZRYAML_SchemaTextLoad(text.data(), text.size(), "schema.yaml", &problems));
    return {std::move(schema), Lines(problems)};
}

struct Checked {
    uint32_t code;
    std::string problems;
};
inline Checked Check(const Loaded &schema, const YamlListNode *value)
{
    YamlProblems *problems = nullptr;
    const uint32_t code = ZRYAML_SchemaCheck(schema.schema.get(), value, &problems);
    return {code, Lines(problems)};
}

inline const YamlListNode *Child(const YamlListNode *map, const std::string &key)
{
    return ZRYAML_ChildFind(map, key.data(), key.size());
}
inline std::string Text(const YamlListNode *map, const std::string &key)
{
    const char *text = ZRYAML_ValueTextGet(Child(map, key));
    return text != nullptr ? text : "";
}

// A text as a JSON string.
inline std::string QuotedText(const std::string &text)
{
    std::string quoted = "\"";
    for (const char character : text) {
        char escape[8];
        (void)snprintf(escape, sizeof(escape), "\\u%04x", static_cast<unsigned char>(character));
        if (character == '"' || character == '\\')
            quoted += '\\';
        quoted += static_cast<unsigned char>(character) < ' ' ? escape : std::string(1, character);
    }
    return quoted + "\"";
}
