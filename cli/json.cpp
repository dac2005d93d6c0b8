// SPDX-License-Identifier: Apache-2.0
// The json command: the tree as it reads, aliases and merges resolved. Every scalar is a string, because a document's
// texts have no types.
#include "document.h"
#include "output.h"
#include "walk.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/writer.h>

namespace zryaml::cli {

namespace {

class OutputStream { // what RapidJSON writes to
public:
    using Ch = char;
    void Put(char cChar) noexcept
    {
        m_acPart[m_ulUsed++] = cChar;
        if (m_ulUsed == sizeof(m_acPart))
            Flush();
    }
    void Flush() noexcept
    {
        OutputText({m_acPart, m_ulUsed});
        m_ulUsed = 0;
    }

private:
    char m_acPart[16384];
    size_t m_ulUsed = 0;
};

template <typename Writer> class JsonVisitor : public Visitor {
public:
    explicit JsonVisitor(Writer &stWriter) noexcept : m_stWriter(stWriter) {}

    void Begin(const YamlChild &stChild) override
    {
        if (stChild.pcKey != nullptr)
            m_stWriter.Key(stChild.pcKey);
        switch (stChild.uiType) {
        case YAML_DATATYPE_MAP:
            m_stWriter.StartObject();
            break;
        case YAML_DATATYPE_SEQ:
            m_stWriter.StartArray();
            break;
        case YAML_DATATYPE_SCALAR:
            m_stWriter.String(ZRYAML_ValueTextGet(stChild.pstValue));
            break;
        default:
            m_stWriter.Null();
        }
    }
    void End(uint32_t uiType) override
    {
        if (uiType == YAML_DATATYPE_MAP)
            m_stWriter.EndObject();
        else
            m_stWriter.EndArray();
    }

private:
    Writer &m_stWriter;
};

template <typename Writer> void JsonWrite(const YamlListNode *pstValue, OutputStream &stStream)
{
    Writer stWriter(stStream);
    if (pstValue == nullptr) {
        stWriter.Null();
    } else {
        JsonVisitor<Writer> stVisitor(stWriter);
        ValueWalk(*pstValue, stVisitor);
    }
    stStream.Put('\n');
    stStream.Flush();
}

} // namespace

Status JsonRun(const Options &stOptions)
{
    const Document stDocument(stOptions.stFile);
    // An empty document is null, but has nothing at any path.
    const bool bAll = !stOptions.stPath;
    const YamlListNode *pstValue = bAll ? stDocument.Top() : &stDocument.Find(stOptions.stPath);
    OutputStream stStream;
    if (stOptions.bPretty)
        JsonWrite<rapidjson::PrettyWriter<OutputStream>>(pstValue, stStream);
    else
        JsonWrite<rapidjson::Writer<OutputStream>>(pstValue, stStream);
    return Status::Found;
}

} // namespace zryaml::cli
