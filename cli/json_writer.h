// SPDX-License-Identifier: Apache-2.0
// RapidJSON with memory that it can't do without: where its own allocator gives NULL it would go on and crash.
#pragma once

#include "text.h"

#include <cstdint>
#include <cstdlib>
#include <new>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace zryaml::cli {

class ThrowingAllocator {
public:
    static constexpr bool kNeedFree = true;
    static void *Malloc(size_t size) { return Realloc(nullptr, 0, size); }
    static void *Realloc(void *old, size_t, size_t size)
    {
        if (size == 0)
            return Free(old), nullptr;
        void *got = realloc(old, size);
        return got != nullptr ? got : throw std::bad_alloc();
    }
    static void Free(void *memory) noexcept { free(memory); }
};

using JsonBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, ThrowingAllocator>;

template <class Stream>
using JsonWriter = rapidjson::Writer<Stream, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

class JsonText : public JsonWriter<JsonBuffer> { // an object or array that becomes a text
public:
    JsonText() : JsonWriter<JsonBuffer>(buffer_) {}

    void put(const char *key, std::string_view text)
    {
        Key(key);
        put(text);
    }
    void put(const char *key, uint32_t number)
    {
        Key(key);
        Uint(number);
    }
    void put(std::string_view text)
    {
        const std::string valid = valid_text(text);
        String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    }
    [[nodiscard]] std::string_view text() const { return {buffer_.GetString(), buffer_.GetSize()}; }

private:
    JsonBuffer buffer_;
};

} // namespace zryaml::cli
