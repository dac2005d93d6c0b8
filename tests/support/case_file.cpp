// SPDX-License-Identifier: Apache-2.0
#include "case_file.h"

#include <cstdio>
#include <map>
#include <regex>
#include <sstream>
#include <utility>

namespace {

using Names = std::map<std::string, std::string, std::less<>>;

// Puts something in the place of each match.
template <class By> std::string EachReplaced(const std::string &text, const std::regex &stForm, const By &fnBy)
{
    std::string result;
    auto itRest = text.begin();
    for (std::sregex_iterator itMatch(itRest, text.end(), stForm), itEnd; itMatch != itEnd; ++itMatch) {
        result.append(itRest, (*itMatch)[0].first) += fnBy(*itMatch);
        itRest = (*itMatch)[0].second;
    }
    return result.append(itRest, text.end());
}

// "\(3 k#,)" becomes "k0,k1,k2,".
std::string Repeated(const std::string &text)
{
    static const std::regex stForm(R"(\\\((\d+) ([^)]*)\))");
    return EachReplaced(text, stForm, [](const std::smatch &stMatch) {
        std::string all;
        for (size_t ul = 0, ulTimes = std::stoul(stMatch[1]); ul < ulTimes; ++ul)
            all += Replaced(stMatch[2], "#", std::to_string(ul));
        return all;
    });
}

// Adds the lines of an outcome, names replaced by what they stand for.
void OutcomeAdd(std::string_view text, const Names &names, std::vector<std::string> &lines)
{
    for (size_t ulAt = 0, ulEnd = 0; ulEnd != text.npos; ulAt = ulEnd + 3) {
        ulEnd = text.find(" | ", ulAt);
        const std::string_view item = text.substr(ulAt, ulEnd == text.npos ? ulEnd : ulEnd - ulAt);
        const size_t ulOpen = item.find('(');
        const auto itName = names.find(item.substr(0, ulOpen));
        if (itName == names.end())
            lines.push_back(Repeated(std::string(item)));
        else
            OutcomeAdd(Replaced(itName->second, "$",
                                ulOpen == item.npos ? "" : item.substr(ulOpen + 1, item.size() - ulOpen - 2)),
                       names, lines);
    }
}

CaseStep StepRead(std::string_view line, size_t ulLine, const Names &names)
{
    CaseStep stStep;
    const size_t ulArrow = line.find(" => ");
    const std::string_view call = line.substr(0, ulArrow);
    const size_t ulSpace = call.find(' ');
    stStep.ulLine = ulLine;
    stStep.operation = call.substr(0, ulSpace);
    stStep.argument = ulSpace == call.npos ? "" : Repeated(std::string(call.substr(ulSpace + 1)));
    stStep.bExpects = ulArrow != line.npos;
    if (stStep.bExpects)
        OutcomeAdd(line.substr(ulArrow + 4), names, stStep.expected);
    return stStep;
}

} // namespace

std::vector<CaseText> CaseFileSplit(const std::string &text)
{
    std::vector<CaseText> cases;
    std::string names; // each "let" so far
    bool bNew = true;  // the next step begins a block
    std::istringstream lines(text);
    size_t ulLine = 1;
    for (std::string line; std::getline(lines, line); ++ulLine) {
        if (line.starts_with("let ")) {
            (bNew ? names : cases.back().text) += line + "\n";
            names += bNew ? "" : line + "\n";
        } else if (!line.empty() && (line[0] != '#' || !bNew)) {
            if (std::exchange(bNew, false))
                cases.push_back({ulLine, names + "\n"});
            cases.back().text += line + "\n";
        }
        bNew = bNew || line.empty();
    }
    return cases;
}

CaseBlock CaseRead(const CaseText &stCase)
{
    CaseBlock block;
    Names names;
    bool bNames = true; // the part in front
    std::istringstream lines(stCase.text);
    size_t ulLine = stCase.ulLine;
    for (std::string line; std::getline(lines, line); ulLine += bNames ? 0 : 1) {
        if (line.empty()) {
            bNames = false;
            --ulLine;
        } else if (line.starts_with("let ")) {
            names[line.substr(4, line.find(' ', 4) - 4)] = line.substr(line.find(' ', 4) + 1);
        } else if (line.starts_with("| ") && !block.empty()) {
            block.back().argument += Repeated(line.substr(2)) + "\n";
        } else if (line.starts_with("  ") && !block.empty()) {
            OutcomeAdd(std::string_view(line).substr(2), names, block.back().expected);
            block.back().bExpects = true;
        } else if (line[0] != '#') {
            block.push_back(StepRead(line, ulLine, names));
        }
    }
    return block;
}

std::string Unescaped(const std::string &text)
{
    static const std::regex stForm(R"(\\(?:x([0-9a-fA-F]{2})|([ntr0\\])))");
    return EachReplaced(text, stForm, [](const std::smatch &stMatch) {
        constexpr std::string_view Letters = "ntr0\\", Bytes{"\n\t\r\0\\", 5};
        return stMatch[1].matched ? static_cast<char>(std::stoi(stMatch[1], nullptr, 16))
                                  : Bytes[Letters.find(*stMatch[2].first)];
    });
}

std::string Printable(std::string_view text)
{
    std::string result;
    for (const char cChar : text) {
        char acShown[8] = {cChar};
        if (cChar < ' ' || cChar > '~')
            (void)snprintf(acShown, sizeof(acShown), "\\x%02X", static_cast<unsigned>(cChar) & 0xFFU);
        result += cChar == '\n' ? "\\n" : acShown;
    }
    return result;
}

std::string Replaced(std::string text, std::string_view what, std::string_view by)
{
    for (size_t ulAt = text.find(what); ulAt != text.npos; ulAt = text.find(what, ulAt + by.size()))
        text.replace(ulAt, what.size(), by);
    return text;
}
