// SPDX-License-Identifier: Apache-2.0
#include "layer_stack.h"

#include <utility>

LayerStack::LayerStack(std::vector<std::string> lines, uint32_t uiFlags, const YamlRecord *pstRecord)
    : m_lines(std::move(lines))
{
    m_names.reserve(m_lines.size());
    bool bVariables = false;
    for (const std::string &line : m_lines) {
        const std::string &name = m_names.emplace_back(std::to_string(m_layers.size()));
        if (line.starts_with("--set ")) {
            m_layers.push_back({YAML_LAYER_ASSIGNMENT, 0, "--set", line.c_str() + 6, 0, nullptr});
        } else if (!line.starts_with('$')) {
            m_layers.push_back({YAML_LAYER_TEXT, 0, name.c_str(), line.data(), line.size(), nullptr});
        } else {
            m_environment.push_back(line.c_str() + 1);
            if (!std::exchange(bVariables, true))
                m_layers.push_back({YAML_LAYER_ENVIRONMENT, 0, "APP_", nullptr, 0, nullptr});
        }
    }
    m_environment.push_back(nullptr);
    m_stOptions = {sizeof(m_stOptions), uiFlags, pstRecord, m_environment.data()};
}

YamlHandle *LayerStack::Load(YamlProblems **ppstProblems) const
{
    return ZRYAML_LayersLoad(m_layers.data(), static_cast<uint32_t>(m_layers.size()), &m_stOptions, ppstProblems);
}

std::string LayerStack::Read() const
{
    YamlProblems *pstProblems = nullptr;
    YamlHandle *pstHandle = Load(&pstProblems);
    std::string text = ProblemsText(pstProblems);
    Require((pstHandle != nullptr) == (ZRYAML_LastErrorGet()->uiCode == YAML_OK), "result and record differ");
    if (pstHandle != nullptr) {
        Require(TreeCheck(*pstHandle).empty(), "the tree is not sound", TreeCheck(*pstHandle));
        text = TreeText(*pstHandle) + text;
    }
    ZRYAML_ProblemsFree(pstProblems);
    ZRYAML_HandleFree(pstHandle);
    return text;
}

std::string ProblemsText(const YamlProblems *pstProblems)
{
    std::string text;
    for (uint32_t ui = 0; const YamlProblem *pst = ZRYAML_ProblemGet(pstProblems, ui); ++ui) {
        text.append("\n").append(pst->uiLevel == YAML_PROBLEM_ERROR ? "" : "-").append(pst->pcSource);
        if (pst->uiLine != 0)
            text += ':' + std::to_string(pst->uiLine) + ':' + std::to_string(pst->uiColumn);
        for (const char *pc : {pst->pcPath, pst->pcMessage})
            text.append(pc[0] != '\0' ? ": " : "").append(pc);
        text += pst->pcHint[0] != '\0' ? " (" + std::string(pst->pcHint) + ')' : "";
    }
    return text;
}
