// SPDX-License-Identifier: Apache-2.0
// The program starts itself with "--hold FILE" or "--reload FILE TIMES" and reads two numbers from it.
#include "memory.h"

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <unistd.h>

#include <zr_base.h>
#include <zr_yaml.h>

#include "peers.h"
#include "text.h"

namespace zryaml::bench {

namespace {

constexpr uint64_t WarmTimes = 100;

std::string Quoted(const std::string &text)
{
    std::string quoted = "'";
    for (const char cChar : text)
        quoted += cChar == '\'' ? std::string("'\\''") : std::string(1, cChar);
    return quoted + "'";
}

// The numbers that this program prints when it is started with the arguments.
std::vector<uint64_t> NumbersOf(const std::string &arguments, size_t ulCount)
{
    char acSelf[4096] = {};
    if (readlink("/proc/self/exe", acSelf, sizeof(acSelf) - 1) < 0)
        throw std::runtime_error("can not find this program");
    struct Close {
        void operator()(FILE *pstPipe) const { (void)pclose(pstPipe); }
    };
    const std::unique_ptr<FILE, Close> stPipe(popen((Quoted(acSelf) + " " + arguments).c_str(), "r"));
    std::vector<uint64_t> numbers(ulCount);
    for (uint64_t &ulNumber : numbers) {
        if (stPipe == nullptr || fscanf(stPipe.get(), "%" SCNu64, &ulNumber) != 1)
            throw std::runtime_error("no numbers from " + arguments);
    }
    return numbers;
}

uint64_t ResidentBytes()
{
    uint64_t ulPages = 0;
    uint64_t ulResident = 0;
    std::ifstream("/proc/self/statm") >> ulPages >> ulResident;
    return ulResident * static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
}

uint64_t NodesOf(const YamlHandle &stHandle)
{
    uint64_t ulNodes = 0;
    const YamlList *pstHead = &stHandle.stRoot.stAllocLink;
    for (const YamlList *pstLink = pstHead->next; pstLink != pstHead; pstLink = pstLink->next)
        ++ulNodes;
    return ulNodes;
}

void Hold(const std::string &path)
{
    YamlHandle *pstHandle = ZRYAML_FileLoad(path.c_str());
    ZR_MemInfo stInfo = {};
    if (pstHandle == nullptr || ZR_MemInfoGet(g_pstYamlMemHandle, &stInfo) != 0)
        throw std::runtime_error("can not load " + path);
    printf("%" PRIu64 " %" PRIu64 "\n", NodesOf(*pstHandle), stInfo.ulBytesInUse);
    ZRYAML_HandleFree(pstHandle);
}

void LoadOften(const std::string &path, uint64_t ulTimes)
{
    const Loader stLibrary = LibraryLoader();
    for (uint64_t ul = 0; ul < ulTimes; ++ul)
        stLibrary.pfnLoad(path.c_str());
}

void LoadAgain(const std::string &path, uint64_t ulTimes)
{
    (void)ResidentBytes(); // the first reading takes memory of its own
    LoadOften(path, WarmTimes);
    const uint64_t ulBefore = ResidentBytes();
    LoadOften(path, ulTimes);
    printf("%" PRIu64 " %" PRIu64 "\n", ulBefore, ResidentBytes());
}

} // namespace

Holding HoldingOf(const Document &stDocument)
{
    const std::vector<uint64_t> numbers = NumbersOf("--hold " + Quoted(stDocument.path), 2);
    return {stDocument.name, stDocument.ulBytes, numbers[0], numbers[1]};
}

Reload ReloadOf(const Document &stDocument, uint64_t ulTimes)
{
    const std::vector<uint64_t> numbers =
        NumbersOf("--reload " + Quoted(stDocument.path) + " " + std::to_string(ulTimes), 2);
    return {stDocument.name, ulTimes, numbers[0], numbers[1]};
}

bool MemoryMode(const std::vector<std::string> &arguments)
{
    if (arguments.size() == 2 && arguments[0] == "--hold") {
        Hold(arguments[1]);
        return true;
    }
    if (arguments.size() == 3 && arguments[0] == "--reload") {
        LoadAgain(arguments[1], std::stoull(arguments[2]));
        return true;
    }
    return false;
}

} // namespace zryaml::bench
