// SPDX-License-Identifier: Apache-2.0
/// @file
/// Documents checked against a JSON Schema: zr_yaml_schema.h for C++. Needs libzryaml_schema.so; CMake target
/// zryaml::schema, pkg-config zryaml_schema.
///
/// @code
/// zryaml::Result<zryaml::Schema, zryaml::Problems> schema = zryaml::Schema::load("server.schema.json");
/// if (!schema)
///     return complain(schema.error().what());
/// if (zryaml::Problems problems = schema->check(conf); !problems.empty())
///     return complain(problems.what());
/// @endcode
#ifndef ZR_YAML_SCHEMA_HPP
#define ZR_YAML_SCHEMA_HPP

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <zr_yaml.hpp>
#include <zr_yaml/problem.hpp>
#include <zr_yaml_schema.h>

namespace zryaml {

/// A loaded schema of draft-07. Moved, never copied; any number of threads may check with one.
class Schema {
public:
    /// Loads a schema from a file, by the rules of ZRYAML_SchemaLoad.
    ///
    /// @param path  Path of the file.
    /// @return The schema, or all that is wrong with it, each with its place.
    [[nodiscard]] static Result<Schema, Problems> load(const std::string &path)
    {
        if (path.find('\0') != std::string::npos) {
            Problem problem;
            problem.code = YAML_ERR_PARAM;
            problem.message = "the path holds a NUL character";
            return Problems(std::move(problem));
        }
        YamlProblems *problems = nullptr;
        YamlSchema *schema = ZRYAML_SchemaLoad(path.c_str(), &problems);
        return loaded(schema, problems);
    }

    /// A path is never NULL.
    static Result<Schema, Problems> load(std::nullptr_t) = delete;

    /// Loads a schema from memory; such a schema has no files to refer to.
    ///
    /// @param text  The schema, in JSON or YAML; not needed after the call.
    /// @param name  Stands for the file in problems.
    /// @return As load().
    [[nodiscard]] static Result<Schema, Problems> parse(std::string_view text, const std::string &name = {})
    {
        YamlProblems *problems = nullptr;
        YamlSchema *schema = ZRYAML_SchemaTextLoad(text.data(), text.size(), name.c_str(), &problems);
        return loaded(schema, problems);
    }

    /// A text is never NULL.
    template <class... Name> static Result<Schema, Problems> parse(std::nullptr_t, const Name &...) = delete;

    /// Checks a document; one without content is checked as an empty map.
    ///
    /// @return All that is wrong, in document order; none if the document fits.
    [[nodiscard]] Problems check(const Document &document) const
    {
        return checked(document.handle() != nullptr ? &document.handle()->stRoot : nullptr);
    }

    /// Checks a value with all below it; an absent one is checked as an empty map.
    ///
    /// @return As above.
    [[nodiscard]] Problems check(const Value &value) const { return checked(value.node()); }

    /// @return The schema for calls of the C interface, which must not free it; NULL after it has been moved from.
    [[nodiscard]] const YamlSchema *get() const noexcept { return schema_.get(); }

private:
    struct Free {
        void operator()(YamlSchema *schema) const noexcept { ZRYAML_SchemaFree(schema); }
    };
    struct ListFree {
        void operator()(YamlProblems *problems) const noexcept { ZRYAML_ProblemsFree(problems); }
    };
    using List = std::unique_ptr<YamlProblems, ListFree>;

    explicit Schema(YamlSchema *schema) noexcept : schema_(schema) {}

    static Result<Schema, Problems> loaded(YamlSchema *schema, YamlProblems *problems)
    {
        const List list(problems);
        if (schema != nullptr)
            return Schema(schema);
        return Problems(list.get());
    }

    Problems checked(const YamlListNode *value) const
    {
        YamlProblems *problems = nullptr;
        (void)ZRYAML_SchemaCheck(schema_.get(), value, &problems);
        const List list(problems);
        return Problems(list.get());
    }

    std::unique_ptr<YamlSchema, Free> schema_;
};

} // namespace zryaml

#endif
