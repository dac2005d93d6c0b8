// SPDX-License-Identifier: Apache-2.0
// A suite is a file that adds measurements to the run; a new one needs nothing but its file:
//
//   const Suite added([](const Setting &setting) { PairAdd("suite/what is done/peer", ...); });
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <zr_yaml.h>

#include "documents.h"

namespace zryaml::bench {

struct Setting {
    std::vector<Document> files; // configuration files: those given by the user, or the generated ones
    std::string folder;          // for documents of a suite's own
};

class Suite {
public:
    using Add = void (*)(const Setting &setting);

    explicit Suite(Add add) { Added().push_back(add); }

    static void AddAll(const Setting &setting)
    {
        for (const Add add : Added())
            add(setting);
    }

private:
    static std::vector<Add> &Added()
    {
        static std::vector<Add> s_added;
        return s_added;
    }
};

using HandlePtr = std::shared_ptr<YamlHandle>;

// Loads a text that is measured later on. Throws std::runtime_error.
[[nodiscard]] HandlePtr HandleOf(const std::string &text);

} // namespace zryaml::bench
