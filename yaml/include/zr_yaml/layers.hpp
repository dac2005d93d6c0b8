// SPDX-License-Identifier: Apache-2.0
/// @file
/// Several sources as one document, where its values came from, and what differs between two documents:
/// zr_yaml_layers.h for C++.
///
/// @code
/// zryaml::Result<zryaml::Document, zryaml::Problems> conf =
///     zryaml::Layers().file("base.yaml").optional("site.yaml").folder("conf.d").environment("APP_").set("a.b=1").load();
/// if (!conf)
///     return complain(conf.error().what());
/// std::cout << (*conf)["a"]["b"].origin()->source;
/// @endcode
#ifndef ZR_YAML_LAYERS_HPP
#define ZR_YAML_LAYERS_HPP

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <zr_yaml.hpp>
#include <zr_yaml/problem.hpp>
#include <zr_yaml_layers.h>

namespace zryaml {

/// Where a value came from. Owns its texts.
struct Origin {
    std::uint32_t layer = 0;         ///< number of its layer, from 0, in the order in which they were added
    std::uint32_t line = 0;          ///< from 1; 0 for a variable or an assignment
    std::uint32_t column = 0;        ///< in characters, from 1; 0 as above
    std::string source;              ///< path, name of a text, "environment APP_PORT" or "--set servers[0].port"
    std::optional<std::string> text; ///< of a scalar

    /// @return `source:line:column`, or the source alone where there is no place.
    [[nodiscard]] std::string what() const
    {
        return line == 0 ? source : source + ':' + std::to_string(line) + ':' + std::to_string(column);
    }
};

inline std::optional<Origin> Value::origin(std::uint32_t shadowed) const
{
    YamlOrigin found = YAML_ORIGIN_INIT;
    if (ZRYAML_OriginGet(node(), shadowed, &found) != YAML_OK)
        return std::nullopt;
    Origin origin{found.uiLayer, found.uiLine, found.uiColumn, found.pcSource, std::nullopt};
    if (found.pcText != nullptr)
        origin.text = found.pcText;
    return origin;
}

/// Layers of one document, the lowest first; each call adds one. Copied freely and loaded as often as wanted.
class Layers {
public:
    /// A file.
    Layers &file(std::string path) { return add(YAML_LAYER_FILE, std::move(path)); }
    /// A file that need not be there.
    Layers &optional(std::string path) { return add(YAML_LAYER_FILE_OPTIONAL, std::move(path)); }
    /// The files *.yaml and *.yml of a folder in byte order, none that begins with '.'.
    Layers &folder(std::string path) { return add(YAML_LAYER_FOLDER, std::move(path)); }
    /// A folder that need not be there.
    Layers &optional_folder(std::string path) { return add(YAML_LAYER_FOLDER_OPTIONAL, std::move(path)); }
    /// A text in memory; the name stands for it in problems and origins.
    Layers &text(std::string text, std::string name) { return add(YAML_LAYER_TEXT, std::move(name), std::move(text)); }
    /// The environment variables that begin with a prefix, such as "APP_".
    Layers &environment(std::string prefix) { return add(YAML_LAYER_ENVIRONMENT, std::move(prefix)); }
    /// One value: "servers[0].port=9090"; the source is what it was written behind.
    Layers &set(std::string assignment, std::string source = "--set")
    {
        return add(YAML_LAYER_ASSIGNMENT, std::move(source), std::move(assignment));
    }

    /// Replaces references such as "${HOME}" in plain and double-quoted scalars of files and texts.
    Layers &expand() { return flag(YAML_LAYERS_EXPAND); }
    /// Reads "<<: [*a, *b]" and "<<: {k: v}" as merges.
    Layers &merge_forms() { return flag(YAML_LAYERS_MERGE_FORMS); }
    /// A description, so that variables reach what no file writes; it must live as long as this.
    Layers &record(const YamlRecord &description)
    {
        record_ = &description;
        return *this;
    }
    /// Variables "NAME=text" in the place of the process's environment.
    Layers &variables(std::vector<std::string> texts)
    {
        variables_ = std::move(texts);
        has_variables_ = true;
        return *this;
    }

    /// Loads all layers.
    ///
    /// @param notes  Receives warnings and notes of a load that succeeds.
    /// @return The document, or all problems of all layers.
    [[nodiscard]] Result<Document, Problems> load(Problems *notes = nullptr) const
    {
        YamlProblems *list = nullptr;
        YamlHandle *handle = nullptr;
        const Problems unfit =
            apply([&](const YamlLayer *layers, std::uint32_t count, const YamlLayerOptions &options) {
                handle = ZRYAML_LayersLoad(layers, count, &options, &list);
            });
        if (!unfit.empty())
            return unfit;
        Problems problems(list);
        ZRYAML_ProblemsFree(list);
        if (handle == nullptr)
            return problems;
        if (notes != nullptr)
            *notes = std::move(problems);
        return Document::adopt(handle);
    }

    /// Hands the layers to a function as the C interface takes them: `void use(const YamlLayer *layers, std::uint32_t
    /// count, const YamlLayerOptions &options)`. What they point to lives during the call.
    ///
    /// @return Nothing; or what is wrong with a layer, and then the function was not called.
    template <class Use> [[nodiscard]] Problems apply(Use use) const
    {
        if (std::optional<Problem> problem = nul_problem())
            return Problems(*std::move(problem));
        std::vector<YamlLayer> layers;
        for (const Item &item : items_) {
            const char *body = item.kind >= YAML_LAYER_TEXT ? item.text.c_str() : nullptr;
            layers.push_back({item.kind, 0, item.source.c_str(), body,
                              item.kind == YAML_LAYER_TEXT ? item.text.size() : 0, nullptr});
        }
        std::vector<const char *> variables;
        for (const std::string &text : variables_)
            variables.push_back(text.c_str());
        variables.push_back(nullptr);
        const YamlLayerOptions options{sizeof(YamlLayerOptions), flags_, record_,
                                       has_variables_ ? variables.data() : nullptr};
        use(layers.data(), static_cast<std::uint32_t>(layers.size()), options);
        return {};
    }

private:
    struct Item {
        std::uint32_t kind;
        std::string source, text;
    };

    Layers &add(std::uint32_t kind, std::string source, std::string text = {})
    {
        items_.push_back({kind, std::move(source), std::move(text)});
        return *this;
    }
    Layers &flag(std::uint32_t which)
    {
        flags_ |= which;
        return *this;
    }

    // What C would cut at a NUL character.
    [[nodiscard]] std::optional<Problem> nul_problem() const
    {
        for (const Item &item : items_) {
            const bool isText = item.kind == YAML_LAYER_TEXT;
            if (item.source.find('\0') == std::string::npos && (isText || item.text.find('\0') == std::string::npos))
                continue;
            Problem problem;
            problem.code = YAML_ERR_PARAM;
            problem.source = item.source.c_str(); // NOLINT(readability-redundant-string-cstr): up to the NUL
            problem.message = "the layer holds a NUL character";
            return problem;
        }
        return std::nullopt;
    }

    std::vector<Item> items_;
    std::vector<std::string> variables_;
    bool has_variables_ = false; // else those of the process
    std::uint32_t flags_ = 0;
    const YamlRecord *record_ = nullptr;
};

/// One difference between two documents; both values are looked at, not owned.
struct Change {
    /// Kinds of differences.
    enum class Kind : std::uint32_t {
        added = YAML_CHANGE_ADDED,     ///< only the new document has the value
        removed = YAML_CHANGE_REMOVED, ///< only the old document has it
        changed = YAML_CHANGE_CHANGED, ///< both have a scalar there, with different texts
    };
    Kind kind;     ///< what happened
    Value before;  ///< the value in the old document; absent if it was added
    Value current; ///< the value in the new document; absent if it was removed
};

/// @return What differs between two documents, as ZRYAML_ChangeNext gives it.
[[nodiscard]] inline std::vector<Change> changes(const Document &before, const Document &current)
{
    std::vector<Change> found;
    YamlChange change = YAML_CHANGE_INIT;
    while (ZRYAML_ChangeNext(before.handle(), current.handle(), &change) == YAML_OK)
        found.push_back({static_cast<Change::Kind>(change.uiKind), Value(change.pstOld), Value(change.pstNew)});
    return found;
}

} // namespace zryaml

#endif
