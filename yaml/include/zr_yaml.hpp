// SPDX-License-Identifier: Apache-2.0
/// @file
/// The C++ face of the library, C++17 and later, header-only, on the public C interface alone.
///
/// @code
/// zryaml::Result<zryaml::Document> loaded = zryaml::Document::load("conf.yaml");
/// if (!loaded)
///     return complain(loaded.error().what());
/// const zryaml::Document doc = *std::move(loaded);
///
/// zryaml::Result<std::uint16_t> port = doc["servers"][0]["port"].get_or<std::uint16_t>(8080);
/// for (zryaml::Value server : doc["servers"])
///     use(server["host"].text().value_or("localhost"));
/// for (auto [key, value] : doc.at("hosts.{}.env", host).items())
///     set(key, value.get<std::string_view>());
/// @endcode
///
/// Rules that always hold:
///
/// - Results: nothing throws, apart from Result::or_throw() and std::bad_alloc. A call that can fail gives a Result,
///   which holds an Error instead of the value; a value that is simply not there is told apart from one that is wrong.
/// - Ownership: a Document owns everything. Values, iterators and string views look into it and must not be used
///   after it; an Error owns its texts.
/// - Threads: distinct documents are independent. One document may be read by any number of threads, none while it is
///   moved, assigned or destroyed.
/// - Keys and paths are plain text, never formats.
///
/// Works with -fno-exceptions, which leaves out Exception and Result::or_throw(), and with -fno-rtti.
///
/// Names are plain C++, types CamelCase and functions lower-case, without the type marks of the C interface, because
/// the users of this header are C++ programmers.
#ifndef ZR_YAML_HPP
#define ZR_YAML_HPP

#if defined(_MSVC_LANG) ? _MSVC_LANG < 201703L : __cplusplus < 201703L
#error "zr_yaml.hpp needs C++17 or later"
#endif

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <zr_yaml.h>
#include <zr_yaml/path.hpp>
#include <zr_yaml/result.hpp>
#include <zr_yaml/scalar.hpp>
#include <zr_yaml/value.hpp>
#include <zr_yaml/value_find.hpp>
#include <zr_yaml/value_walk.hpp>

namespace zryaml {

/// A loaded document, which owns all its values and texts. Moved, never copied; one that has been moved from has only
/// absent values and may be assigned to. Moving leaves values and string views usable.
class Document {
public:
    /// Loads a YAML 1.1 file of one document, by the rules of ZRYAML_FileLoad.
    ///
    /// @param path  Path of the file, which stands as given in errors.
    /// @return The document, or the error with its place in the file.
    [[nodiscard]] static Result<Document> load(const std::string &path)
    {
        if (path.find('\0') != std::string::npos) {
            Error error;
            error.message = "the path holds a NUL character";
            return error;
        }
        return loaded(ZRYAML_FileLoad(path.c_str()));
    }

    /// A path is never NULL.
    static Result<Document> load(std::nullptr_t) = delete;

    /// Loads a text from memory, by the rules of ZRYAML_TextLoad.
    ///
    /// @param text  UTF-8, or UTF-16 with a byte order mark; not needed after the call.
    /// @param name  Stands for the file in errors.
    /// @return As load().
    [[nodiscard]] static Result<Document> parse(std::string_view text, const std::string &name = {})
    {
        return loaded(ZRYAML_TextLoad(text.data(), text.size(), name.c_str()));
    }

    /// A text is never NULL.
    template <class... Name> static Result<Document> parse(std::nullptr_t, const Name &...) = delete;

    /// Takes over a document that a call of the C interface made.
    ///
    /// @param handle  The document, freed together with this one; NULL for a document that has only absent values.
    /// @return The document.
    [[nodiscard]] static Document adopt(YamlHandle *handle) noexcept { return Document(handle); }

    /// @return The top map or sequence; absent if the document is empty.
    [[nodiscard]] Value root() const & { return Value(handle_.get()); }
    /// Values of a document that is about to vanish would dangle: give it a name first.
    Value root() const && = delete;

    /// As root()[key], key being a text, or an index where the document is a sequence.
    template <class Key> [[nodiscard]] auto operator[](const Key &key) const & -> decltype(Value()[key])
    {
        return root()[key];
    }
    /// As for root().
    template <class Key> Value operator[](const Key &key) const && = delete;

    /// As root().at(path, arguments...).
    template <class... Arguments> [[nodiscard]] Value at(std::string_view path, const Arguments &...arguments) const &
    {
        return root().at(path, arguments...);
    }
    /// A path is never NULL, as the number 0 would be.
    template <class... Arguments> Value at(std::nullptr_t, const Arguments &...) const & = delete;
    /// As for root().
    template <class... Arguments> Value at(std::string_view path, const Arguments &...arguments) const && = delete;

    /// @return The path or name that the document was loaded with; lives as long as the document.
    [[nodiscard]] const char *name() const noexcept { return ZRYAML_NameGet(handle_.get()); }

    /// @return The document for calls of the C interface, which must not free it; NULL after it has been moved from.
    [[nodiscard]] YamlHandle *handle() const noexcept { return handle_.get(); }

private:
    struct Free {
        void operator()(YamlHandle *handle) const noexcept { ZRYAML_HandleFree(handle); }
    };

    explicit Document(YamlHandle *handle) noexcept : handle_(handle) {}

    static Result<Document> loaded(YamlHandle *handle)
    {
        if (handle != nullptr)
            return Document(handle);
        const YamlErrorInfo *info = ZRYAML_LastErrorGet();
        Error error;
        error.code = info->uiCode;
        error.message = info->pcMessage;
        error.hint = info->pcHint;
        error.record = info->pcRecord;
        error.file = info->pcFile;
        error.line = info->uiLine;
        error.column = info->uiColumn;
        error.first_line = info->uiFirstLine;
        error.first_column = info->uiFirstColumn;
        return error;
    }

    std::unique_ptr<YamlHandle, Free> handle_;
};

} // namespace zryaml

#endif
