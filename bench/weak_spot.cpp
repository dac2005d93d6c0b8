// SPDX-License-Identifier: Apache-2.0
// Documents made to cost as much time as their bytes can, each at two sizes: prints what loading, the list of unread
// keys and the dump take at the larger one, and how the time grows (1: with the size, 2: with its square).
// Usage: weak_spot [kilobytes] [part of a name]
#include <zr_base.h>
#include <zr_yaml.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr double TooLong = 10.0; // seconds; a hang, whatever the machine

// Repeats a piece, '@' in it replaced by the number of the repetition, until so many bytes are there.
std::string Many(const std::string &piece, size_t ulBytes)
{
    std::string text;
    for (uint32_t ui = 0; text.size() + piece.size() <= ulBytes; ++ui) {
        for (const char cChar : piece)
            text += cChar == '@' ? std::to_string(ui) : std::string(1, cChar);
    }
    return text;
}

std::string Run(size_t ulBytes, char cChar = 'x')
{
    return std::string(ulBytes, cChar);
}

// Five hundred anchored maps in one another, and a piece many times in the innermost.
std::string DeepAnchors(const std::string &piece, size_t ulBytes)
{
    const std::string open = "&a {k: ";
    return "b: &b {p: 1}\nd: " + Many(open, 500 * open.size()) + "{" + Many(piece, ulBytes) + "}" + Run(500, '}') +
           "\n";
}

struct Shape {
    const char *pcName;
    std::string (*pfnText)(size_t ulBytes);
};

constexpr Shape g_astShape[] = {
    // Plain size
    {"flat map", [](size_t n) { return Many("key@: value\n", n); }},
    {"one line of flow maps", [](size_t n) { return "[" + Many("{a: b}, ", n) + "]"; }},
    {"one line of flow keys", [](size_t n) { return "{" + Many("k@: , ", n) + "}"; }},
    {"explicit keys", [](size_t n) { return Many("? k@\n: v\n", n); }},
    {"list of maps", [](size_t n) { return Many("- a: 1\n", n); }},
    {"one comment", [](size_t n) { return "a: 1 #" + Run(n) + "\n"; }},
    {"comments", [](size_t n) { return Many("# x\n", n) + "a: 1\n"; }},
    {"document ends", [](size_t n) { return "a: 1\n" + Many("...\n", n); }},
    {"document starts", [](size_t n) { return Many("--- {}\n", n); }},
    {"one text", [](size_t n) { return "a: " + Run(n) + "\n"; }},
    {"one quoted text of escapes", [](size_t n) { return "a: \"" + Many("\\u00e9", n) + "\"\n"; }},
    {"block text", [](size_t n) { return "a: |\n" + Many("  x\n", n); }},
    {"one key that is too long", [](size_t n) { return Run(n) + ": 1\n"; }},
    {"one explicit key", [](size_t n) { return "? " + Run(n) + "\n: 1\n"; }},
    {"long keys", [](size_t n) { return Many(Run(900) + "@: v\n", n); }},
    {"deep indentation", [](size_t n) { return "a:\n" + Many(Run(1000, ' ') + "k@: v\n", n); }},
    // Depth
    {"flow depth", [](size_t n) { return Run(n, '['); }},
    {"block depth", [](size_t n) { return Many("- ", n) + "a\n"; }},
    {"key depth", [](size_t n) { return Many("? ", n) + "a\n"; }},
    {"items at flow depth 510", [](size_t n) { return Run(510, '[') + Many("a,", n) + Run(510, ']'); }},
    {"maps at flow depth 510", [](size_t n) { return Run(510, '[') + Many("{a: b},", n) + Run(510, ']'); }},
    {"brackets up and down", [](size_t n) { return "[" + Many(Run(500, '[') + Run(500, ']') + ",", n) + "]"; }},
    // White space inside a text, kept by the parser and cleared for each word that follows
    {"plain text, long gap", [](size_t n) { return "a: x" + Run(n / 2, ' ') + Many("x ", n / 2) + "\n"; }},
    {"quoted text, long gap", [](size_t n) { return "a: \"x" + Run(n / 2, ' ') + Many("x ", n / 2) + "\"\n"; }},
    {"plain text, empty lines", [](size_t n) { return "a: x" + Run(n / 2, '\n') + Many(" x\n\n", n / 2); }},
    {"quoted text, empty lines", [](size_t n) { return "a: 'x" + Run(n / 2, '\n') + Many(" x\n\n", n / 2) + "'\n"; }},
    {"block text, empty lines", [](size_t n) { return "a: |\n x" + Run(n / 2, '\n') + Many(" x\n\n", n / 2); }},
    // Directives and tags
    {"tag directives", [](size_t n) { return Many("%TAG !t@! x\n", n) + "---\na: 1\n"; }},
    {"tag directives, CR", [](size_t n) { return Many("%TAG !t@! x\r", n) + "---\na: 1\n"; }},
    {"tag directives, NEL", [](size_t n) { return Many("%TAG !t@! x\xC2\x85", n) + "---\na: 1\n"; }},
    {"tag directives, LS", [](size_t n) { return Many("%TAG !t@! x\xE2\x80\xA8", n) + "---\na: 1\n"; }},
    {"tags, 999 directives",
     [](size_t n) { return Many("%TAG !t@! x\n", 13890) + "---\n" + Many("- !t998!a\n", n - 13890); }},
    {"tags, one long prefix", [](size_t n) { return "%TAG !t! " + Run(n / 2) + "\n---\n" + Many("- !t!a\n", n / 2); }},
    {"one long tag", [](size_t n) { return "a: !<" + Run(n) + "> b\n"; }},
    // Anchors and aliases
    {"anchors", [](size_t n) { return Many("k@: &a@ v\n", n); }},
    {"anchors of one name", [](size_t n) { return Many("- &a x\n", n); }},
    {"anchors with long names", [](size_t n) { return Many("- &" + Run(500) + "@ x\n", n); }},
    {"one long anchor name", [](size_t n) { return "- &" + Run(n) + " x\n"; }},
    {"anchors dropped at depth", [](size_t n) { return DeepAnchors("&c <<: *b, ", n); }},
    {"anchors of one name dropped", [](size_t n) { return Many("- &b {a: 1}\n- &c x\n- {&c <<: *b}\n", n); }},
    {"anchored texts, one dropped", [](size_t n) { return "- &b {}\n" + Many("- &k {&k <<: *b, p: &k x}\n", n); }},
    {"unfinished anchor named again", [](size_t n) { return "- &a [" + Many("&a x, ", n) + "]\n"; }},
    {"aliases of one text", [](size_t n) { return "- &a " + Run(n / 2) + "\n" + Many("- *a\n", n / 2); }},
    {"aliases of a list", [](size_t n) { return "- &a [" + Many("x, ", n / 2) + "]\n" + Many("- *a\n", n / 2); }},
    {"aliases of aliases",
     [](size_t n) { return "- &a [x,x,x,x,x,x,x,x,x]\n" + Many("- &a [*a,*a,*a,*a,*a,*a,*a,*a,*a]\n", n); }},
    // Merges
    {"one map merged into one",
     [](size_t n) { return "b: &b {" + Many("k@: , ", n / 2) + "}\nm: {" + Many("<<: *b, ", n / 2) + "}\n"; }},
    {"one map merged into many",
     [](size_t n) { return "b: &b {" + Many("k@: , ", n / 2) + "}\nm:\n" + Many("- {<<: *b}\n", n / 2); }},
    {"empty maps merged",
     [](size_t n) { return "b: &b [" + Many("{},", n / 2) + "]\nm: {" + Many("<<: *b, ", n / 2) + "}\n"; }},
    {"one long key merged",
     [](size_t n) { return "b: &b {? " + Run(n / 2) + " : 1}\nm: {" + Many("<<: *b, ", n / 2) + "}\n"; }},
    {"one long key merged from a list",
     [](size_t n) { return "b: &b [{? " + Run(n / 2) + " : 1}]\nm: {" + Many("<<: *b, ", n / 2) + "}\n"; }},
    {"one long value merged",
     [](size_t n) { return "b: &b {k: " + Run(n / 2) + "}\nm: {" + Many("<<: *b, ", n / 2) + "}\n"; }},
    {"merged keys overridden",
     [](size_t n) { return "b: &b {" + Many("k@: , ", n / 2) + "}\nm: {<<: *b, " + Many("k@: , ", n / 2) + "}\n"; }},
    {"map merged into itself grown", [](size_t n) { return "b: &b {k: v}\n" + Many("m@: &b {<<: *b, k@: v}\n", n); }},
    // Refused at the very end
    {"bracket never closed", [](size_t n) { return "[" + Many("a, ", n); }},
    {"quote never closed", [](size_t n) { return "a: \"" + Many("x\n", n); }},
    {"broken byte at the end", [](size_t n) { return Many("- x\n", n) + "\xC3"; }},
    {"repeated key at the end", [](size_t n) { return Many("k@: v\n", n) + "k0: v\n"; }},
    {"tab after many lines", [](size_t n) { return Many("k@: v\n", n) + "a:\n\tb: c\n"; }},
};

struct Cost {
    double dLoad = 0, dUnread = 0, dDump = 0; // seconds
    std::string result;
};

double Since(clock_t stStart) // of processor time, so that other programs do not count
{
    return static_cast<double>(clock() - stStart) / CLOCKS_PER_SEC;
}

Cost Measure(const std::string &text)
{
    static std::vector<char> s_dump(size_t{64} << 20);
    Cost stCost;
    clock_t stStart = clock();
    YamlHandle *pstHandle = ZRYAML_TextLoad(text.data(), text.size(), "");
    stCost.dLoad = Since(stStart);
    stCost.result = pstHandle != nullptr ? "loads" : ZRYAML_LastErrorGet()->pcRecord;
    stCost.result.resize(std::min(stCost.result.find('\n'), stCost.result.size()));
    if (pstHandle == nullptr)
        return stCost;

    stStart = clock();
    for (YamlUnreadKey stKey = YAML_UNREAD_KEY_INIT;
         ZRYAML_UnreadKeyNext(pstHandle, &stKey) == YAML_OK && Since(stStart) < TooLong;) {
    }
    stCost.dUnread = Since(stStart);
    stStart = clock();
    (void)ZRYAML_ContextDump(pstHandle, static_cast<uint32_t>(s_dump.size()), s_dump.data());
    stCost.dDump = Since(stStart);
    ZRYAML_HandleFree(pstHandle);
    return stCost;
}

// The least of some measurements, each operation by itself.
Cost Best(const std::string &text)
{
    Cost stBest = Measure(text);
    for (int i = 0; i < 4 && stBest.dLoad < 0.2 && stBest.dUnread < 0.2 && stBest.dDump < 0.2; ++i) {
        const Cost stAgain = Measure(text);
        stBest.dLoad = std::min(stBest.dLoad, stAgain.dLoad);
        stBest.dUnread = std::min(stBest.dUnread, stAgain.dUnread);
        stBest.dDump = std::min(stBest.dDump, stAgain.dDump);
    }
    return stBest;
}

// How the time grows with the size; a time too short to tell counts as none.
double Growth(double dSmall, double dLarge, double dSizes)
{
    return dLarge < 0.001 ? 0 : std::log(dLarge / std::max(dSmall, 1e-6)) / std::log(dSizes);
}

} // namespace

int main(int iCount, char **ppcArguments)
{
    const size_t ulBytes = (iCount > 1 ? strtoul(ppcArguments[1], nullptr, 10) : 300) * 1000;
    const char *pcWanted = iCount > 2 ? ppcArguments[2] : "";
    if (ulBytes < 100000) {
        (void)fprintf(stderr, "usage: weak_spot [kilobytes, at least 100] [part of a name]\n");
        return 2;
    }
    ZR_LogLevelSet(ZR_LOG_NOTHING);
    bool bTooLong = false;
    printf("%-32s %18s %18s %18s  result, at %zu kB\n", "shape", "load ms, growth", "unread ms, growth",
           "dump ms, growth", ulBytes / 1000);
    for (const Shape &stShape : g_astShape) {
        if (strstr(stShape.pcName, pcWanted) == nullptr)
            continue;
        const std::string small = stShape.pfnText(ulBytes / 4);
        const std::string large = stShape.pfnText(ulBytes);
        const double dSizes = static_cast<double>(large.size()) / static_cast<double>(small.size());
        ZRYAML_DebugSwitchSet(2); // keys that are read are marked, loads are not traced
        const Cost stSmall = Best(small);
        const Cost stLarge = Best(large);
        printf("%-32s %10.1f %7.2f %10.1f %7.2f %10.1f %7.2f  %.60s\n", stShape.pcName, stLarge.dLoad * 1e3,
               Growth(stSmall.dLoad, stLarge.dLoad, dSizes), stLarge.dUnread * 1e3,
               Growth(stSmall.dUnread, stLarge.dUnread, dSizes), stLarge.dDump * 1e3,
               Growth(stSmall.dDump, stLarge.dDump, dSizes), stLarge.result.c_str());
        (void)fflush(stdout);
        bTooLong = bTooLong || stLarge.dLoad + stLarge.dUnread + stLarge.dDump > TooLong;
    }
    return bTooLong ? 1 : 0;
}
