// SPDX-License-Identifier: Apache-2.0
// zryaml json: the tree as it reads, aliases and merges resolved. Every scalar is a string, because a document's texts
// have no types, unless they are asked for.
#include "../document.h"
#include "../output.h"
#include "../tree_writer.h"

#include <rapidjson/prettywriter.h>

namespace zryaml::cli {

namespace {

class OutputStream { // what RapidJSON writes to
public:
    using Ch = char;
    void Put(char character) noexcept
    {
        part_[used_++] = character;
        if (used_ == sizeof(part_))
            Flush();
    }
    void Flush() noexcept
    {
        output_text({part_, used_});
        used_ = 0;
    }

private:
    char part_[16384];
    size_t used_ = 0;
};

template <class Writer> void json_write(const OpenDocument &open, const Value &value, const Options &options)
{
    OutputStream stream;
    Writer writer(stream);
    const std::unique_ptr<Reporter> reporter = options.typed ? side_reporter_make(options) : nullptr;
    TreeWriter<Writer>(writer, open, reporter.get()).write(value);
    stream.Put('\n');
    stream.Flush();
}

} // namespace

Status json_run(const Options &options)
{
    const OpenDocument open(options);
    // An empty document is null, but has nothing at any path.
    const Value value = options.path ? open.require() : open.root();
    using Pretty = rapidjson::PrettyWriter<OutputStream, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;
    if (options.pretty)
        json_write<Pretty>(open, value, options);
    else
        json_write<JsonWriter<OutputStream>>(open, value, options);
    return Status::found;
}

} // namespace zryaml::cli
