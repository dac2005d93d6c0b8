// SPDX-License-Identifier: Apache-2.0
// Reading 10,000 records of eight fields, in C and in C++, against loading them, and against yaml-cpp's conversion of
// the same type. A read in C adds to its document, so there the document is loaded anew each time.
#include <stdexcept>
#include <string>
#include <vector>

#include <yaml-cpp/yaml.h>
#include <zr_yaml/bind.hpp>

#include "bound_items.h"
#include "measure.h"
#include "suite.h"

struct Item {
    std::string name;
    std::string host;
    std::uint16_t port = 0;
    int weight = 0;
    double ratio = 0;
    bool active = false;
    std::chrono::nanoseconds timeout{};
    zryaml::Bytes memory;
};
ZRYAML_FIELDS(Item, name, host, port, weight, ratio, active, timeout, memory)
struct ItemList {
    std::vector<Item> items;
};
ZRYAML_FIELDS(ItemList, items)

// The same for yaml-cpp, which has neither durations nor sizes: they are left as texts.
struct PlainItem {
    std::string name, host;
    std::uint16_t port = 0;
    int weight = 0;
    double ratio = 0;
    bool active = false;
    std::string timeout, memory;
};
template <> struct YAML::convert<PlainItem> {
    static bool decode(const Node &node, PlainItem &item)
    {
        item = {node["name"].as<std::string>(),    node["host"].as<std::string>(),  node["port"].as<std::uint16_t>(),
                node["weight"].as<int>(),          node["ratio"].as<double>(),      node["active"].as<bool>(),
                node["timeout"].as<std::string>(), node["memory"].as<std::string>()};
        return true;
    }
};

namespace zryaml::bench {

namespace {

constexpr uint32_t Count = 10000;

std::string ItemsText()
{
    std::string text = "items:\n";
    for (uint32_t number = 0; number < Count; ++number) {
        const std::string digits = std::to_string(number);
        text += "- name: item " + digits + "\n  host: host" + digits +
                ".example.org\n  port: " + std::to_string(1024 + number) + "\n  weight: -" + digits + "\n  ratio: 0." +
                digits + "\n  active: " + (number % 2 == 0 ? "true" : "false") + "\n  timeout: " + digits +
                "ms\n  memory: " + digits + "KiB\n";
    }
    return text;
}

void Check(bool right, const char *what)
{
    if (!right)
        throw std::runtime_error(std::string(what) + " did not read all items");
}

const Suite added([](const Setting &) {
    const std::string text = ItemsText();
    const HandlePtr document = HandleOf(text);
    const auto Load = [text] { Check(HandleOf(text) != nullptr, "a load"); };
    const auto InC = [text] {
        ItemsInC items = {};
        const HandlePtr loaded = HandleOf(text);
        (void)ZRYAML_RecordRead(loaded.get(), nullptr, &ItemsInCRecord, &items, nullptr);
        Check(items.count == Count, "C");
    };
    const auto InCxx = [document] {
        const auto items = bind<ItemList>(Value(document.get()));
        Check(items && items->items.size() == Count, "C++");
    };
    const auto ByYamlCpp = [root = YAML::Load(text)] {
        Check(root["items"].as<std::vector<PlainItem>>().size() == Count, "yaml-cpp");
    };
    PairAdd("bind/load and read 10,000 records in C/load", {Repeated(InC), 1}, {Repeated(Load), 1});
    PairAdd("bind/read 10,000 records in C++/load", {Repeated(InCxx), 1}, {Repeated(Load), 1});
    PairAdd("bind/read 10,000 records in C++/yaml-cpp", {Repeated(InCxx), 1}, {Repeated(ByYamlCpp), 1});
});

} // namespace

} // namespace zryaml::bench
