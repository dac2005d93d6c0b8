// SPDX-License-Identifier: Apache-2.0
// Stacks of layers as tests write them: a line each. "--set path=text" is an assignment, "$NAME=text" a variable of the
// one layer "APP_", which stands where the first of them does, and anything else a document, named by its number.
#pragma once

#include "tree_check.h"

#include <string>
#include <vector>

#include <zr_yaml_bind.h>
#include <zr_yaml_layers.h>

struct LayerStack {
    explicit LayerStack(std::vector<std::string> lines, uint32_t uiFlags = 0, const YamlRecord *pstRecord = nullptr);
    YamlHandle *Load(YamlProblems **ppstProblems) const;

    // Loads and releases: the tree as TreeText gives it, if TreeCheck finds it sound, and the problems as lines.
    [[nodiscard]] std::string Read() const;

private:
    std::vector<std::string> m_lines, m_names;
    std::vector<YamlLayer> m_layers;
    std::vector<const char *> m_environment;
    YamlLayerOptions m_stOptions;
};

// The problems as lines "source:line:column: path: sentence (hint)", without what is not there, notes behind a '-'.
std::string ProblemsText(const YamlProblems *pstProblems);
