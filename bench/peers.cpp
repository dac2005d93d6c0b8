// SPDX-License-Identifier: Apache-2.0
// Loading. Each peer reads the file by itself, with the settings that it has by default.
#include "peers.h"

#include <cstdio>
#include <gnu/libc-version.h>
#include <libfyaml.h>
#include <memory>
#include <stdexcept>
#include <yaml-cpp/yaml.h>
#include <yaml.h>

#include <zr_yaml.h>

namespace zryaml::bench {

namespace {

[[noreturn]] void Fail(const char *pcLoader, const char *pcPath)
{
    throw std::runtime_error(std::string(pcLoader) + " can not load " + pcPath);
}

// libyaml's parser over an open file; both are given back however the load ends.
class FileParser {
public:
    explicit FileParser(const char *pcPath) : m_pstFile(fopen(pcPath, "rb"))
    {
        if (m_pstFile == nullptr || yaml_parser_initialize(&m_stParser) == 0)
            Fail("libyaml", pcPath);
        yaml_parser_set_input_file(&m_stParser, m_pstFile);
    }
    FileParser &operator=(FileParser &&) = delete;
    ~FileParser()
    {
        yaml_parser_delete(&m_stParser);
        (void)fclose(m_pstFile);
    }
    yaml_parser_t *Get() { return &m_stParser; }

private:
    FILE *m_pstFile;
    yaml_parser_t m_stParser{};
};

void LibraryLoad(const char *pcPath)
{
    YamlHandle *pstHandle = ZRYAML_FileLoad(pcPath);
    if (pstHandle == nullptr)
        Fail("the library", pcPath);
    ZRYAML_HandleFree(pstHandle);
}

void EventLoop(const char *pcPath)
{
    FileParser stParser(pcPath);
    yaml_event_t stEvent;
    bool bEnd = false;
    while (!bEnd) {
        if (yaml_parser_parse(stParser.Get(), &stEvent) == 0)
            Fail("libyaml", pcPath);
        bEnd = stEvent.type == YAML_STREAM_END_EVENT;
        yaml_event_delete(&stEvent);
    }
}

void DocumentLoad(const char *pcPath)
{
    FileParser stParser(pcPath);
    yaml_document_t stDocument;
    if (yaml_parser_load(stParser.Get(), &stDocument) == 0)
        Fail("yaml_parser_load", pcPath);
    const bool bAny = yaml_document_get_root_node(&stDocument) != nullptr;
    yaml_document_delete(&stDocument);
    if (!bAny)
        Fail("yaml_parser_load", pcPath);
    // As a caller would, it reads on to the end of the stream; that is the empty document.
    if (yaml_parser_load(stParser.Get(), &stDocument) == 0)
        Fail("yaml_parser_load", pcPath);
    yaml_document_delete(&stDocument);
}

void FyamlLoad(const char *pcPath)
{
    fy_document *pstDocument = fy_document_build_from_file(nullptr, pcPath);
    const bool bLoaded = fy_document_root(pstDocument) != nullptr;
    fy_document_destroy(pstDocument);
    if (!bLoaded)
        Fail("libfyaml", pcPath);
}

void YamlCppLoad(const char *pcPath)
{
    const YAML::Node stRoot = YAML::LoadFile(pcPath);
    if (!stRoot.IsDefined())
        Fail("yaml-cpp", pcPath);
}

} // namespace

Loader LibraryLoader()
{
    return {"library", LibraryLoad};
}

Loader EventLoopLoader()
{
    return {"event loop", EventLoop};
}

Loader DocumentLoader()
{
    return {"yaml_parser_load", DocumentLoad};
}

Loader FyamlLoader()
{
    return {"libfyaml", FyamlLoad};
}

Loader YamlCppLoader()
{
    return {"yaml-cpp", YamlCppLoad};
}

std::vector<std::string> VersionsGet()
{
    return {
        std::string("libyaml ") + yaml_get_version_string(),
        std::string("libfyaml ") + fy_library_version(),
        std::string("yaml-cpp ") + YAMLCPP_VERSION,
        std::string("glibc ") + gnu_get_libc_version(),
        std::string("compiler ") + __VERSION__,
    };
}

} // namespace zryaml::bench
