// SPDX-License-Identifier: Apache-2.0
// The operations of the case files, which cases/README.md describes.
#pragma once

#include "load_text.h"

#include <map>
#include <string>

struct Operation {
    std::string (*pfnRun)(YamlHandle *, const std::string &argument); // the outcome
    enum { Text, Document, Paths } eTakes;                            // a text of its own, the document, it and paths
};

extern const std::map<std::string, Operation> g_loadOperations, g_readOperations, g_cxxOperations;

// The node at a path to a key or an element; "" is the value of the whole document. Behind the path '^' leads to the
// father, '/' to the first child, '>' to the next child of the father.
YamlListNode *NodeAt(YamlHandle &stHandle, const std::string &word);
// Changes one node, so that the tree is none that a load makes. False if there is no such change or no such node.
bool NodeDamage(YamlHandle &stHandle, const std::string &kindAndNode);

std::string Place(uint32_t uiLine, uint32_t uiColumn);
// The log, and the error record if it says something else than the first record of the log.
std::string LogAndError(const std::string &path, const std::string &file);
