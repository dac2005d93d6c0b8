// SPDX-License-Identifier: Apache-2.0
// Finds what a variable names. A component takes the key that is equal, else the only one that is equal apart from case
// and from '-' and '.' for '_', else it is a new key in small letters. The way is known before anything is made.
#include "environment_way.h"

#include "description.h"

#include "../key_path.h"

#include <algorithm>
#include <cstring>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

constexpr char Lower(char character) noexcept
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

// Whether a key reads like a component, in which '_' stands for what a variable's name can't have.
bool IsLike(std::string_view key, std::string_view component) noexcept
{
    if (key.size() != component.size())
        return false;
    for (size_t at = 0; at < key.size(); ++at) {
        const bool standsFor = component[at] == '_' && (key[at] == '-' || key[at] == '.');
        if (!standsFor && Lower(key[at]) != Lower(component[at]))
            return false;
    }
    return true;
}

// The keys that a component may mean, each told once.
class KeyChoice {
public:
    explicit KeyChoice(std::string_view component) noexcept : m_component(component) {}

    void Offer(const char *key) noexcept
    {
        if (!IsLike(key, m_component) || (m_first != nullptr && strcmp(m_first, key) == 0))
            return;
        if (m_component == key)
            m_exact = key;
        (m_first == nullptr ? m_first : m_second) = key;
    }
    [[nodiscard]] const char *Chosen() const noexcept { return m_exact != nullptr ? m_exact : m_first; }
    [[nodiscard]] bool IsOpen() const noexcept { return m_exact == nullptr && m_second != nullptr; }
    [[nodiscard]] const char *First() const noexcept { return m_first; }
    [[nodiscard]] const char *Second() const noexcept { return m_second; }

private:
    std::string_view m_component;
    const char *m_exact = nullptr;
    const char *m_first = nullptr;
    const char *m_second = nullptr;
};

uint64_t NumberOf(std::string_view digits) noexcept
{
    uint64_t number = 0;
    for (const char digit : digits) {
        if (number > UINT64_MAX / 10 - 1)
            return UINT64_MAX;
        number = number * 10 + static_cast<uint64_t>(digit - '0');
    }
    return number;
}

// Goes down the document, and the description where there is one, by the components of one variable.
class WayFinder {
public:
    // Texts are those of the variable: its source, and its path in small letters.
    // cppcheck-suppress uninitMemberVar ; steps are written before they count
    WayFinder(Stack &stack, const Variable &variable, const char *source, const char *lowered) noexcept
        : m_stack(stack), m_variable(variable), m_source(source), m_lowered(lowered),
          m_value(FirstChild(stack.document->stRoot)), m_described(stack.options.pstRecord)
    {}

    // False if the variable is told to be wrong, or to be none of the program's.
    [[nodiscard]] bool Go() noexcept
    {
        ComponentReader reader(m_variable.path);
        while (reader.Next()) {
            if (reader.Component().empty())
                return Refuse("a component of the name is empty", "");
            if (m_count == StepsMax)
                return Refuse("the name has too many components", "");
            if (!Go(reader.Component()))
                return false;
        }
        return true;
    }

    Step steps[StepsMax];
    [[nodiscard]] uint32_t Count() const noexcept { return m_count; }

    // How the text is to be read.
    [[nodiscard]] Reads HowRead() const noexcept { return m_described.HowRead(); }

private:
    bool Go(std::string_view component) noexcept
    {
        const uint32_t type = m_value != nullptr && !IsPlainEmpty(*m_value) ? m_value->uiDataType : YAML_DATATYPE_NONE;
        if (type == YAML_DATATYPE_SEQ)
            return ElementGo(component);
        if (type == YAML_DATATYPE_NONE && m_described.What() == Description::Kind::Sequence)
            return ElementGo(component);
        return KeyGo(component, type == YAML_DATATYPE_MAP ? m_value : nullptr);
    }

    bool ElementGo(std::string_view component) noexcept
    {
        if (!IsNumber(component))
            return Refuse("a sequence has no element ", component);
        const uint64_t index = NumberOf(component);
        m_value = m_value != nullptr ? ElementAt(*m_value, index) : nullptr;
        m_described = m_described.Element(index);
        steps[m_count++] = {true, {}, index};
        return true;
    }

    bool KeyGo(std::string_view component, const YamlListNode *map) noexcept
    {
        KeyChoice choice(component);
        if (map != nullptr) {
            for (const YamlListNode &key : Children(*map))
                choice.Offer(key.pcValue);
        }
        for (uint32_t number = 0; const char *key = m_described.Key(number); ++number)
            choice.Offer(key);
        if (choice.IsOpen()) {
            Tell(m_stack, {m_source, m_value}, "the name means both '%s' and '%s'", choice.First(), choice.Second());
            return false;
        }
        if (choice.Chosen() != nullptr)
            return KeyTake(choice.Chosen(), map);
        const Description::Kind what = m_described.What();
        if (what == Description::Kind::Record || what == Description::Kind::Scalar)
            return Refuse("there is no key like ", component);
        const char *lowered = m_lowered + (component.data() - m_variable.path.data());
        return KeyTake({lowered, component.size()}, map);
    }

    bool KeyTake(std::string_view text, const YamlListNode *map) noexcept
    {
        const YamlListNode *key = map != nullptr ? KeyFind(*map, text) : nullptr;
        m_value = key != nullptr ? FirstChild(*key) : nullptr;
        m_described = m_described.Below(text);
        steps[m_count++] = {false, key != nullptr ? key->pcValue : text, 0};
        return true;
    }

    // A program that describes its document ignores what is not for it, and lets the person know.
    bool Refuse(const char *what, std::string_view component) noexcept
    {
        Spot spot = {m_source, m_value};
        if (m_stack.options.pstRecord != nullptr) {
            spot.level = YAML_PROBLEM_NOTE;
            spot.hint = "the variable is ignored";
        }
        Tell(m_stack, spot, component.empty() ? "%s" : "%s'%.*s'", what, static_cast<int>(component.size()),
             component.data());
        return false;
    }

    Stack &m_stack;
    const Variable &m_variable;
    const char *m_source;
    const char *m_lowered;
    const YamlListNode *m_value; // what stands where the way has led; NULL: nothing
    Description m_described;     // what is said of that place
    uint32_t m_count = 0;
};

constexpr std::string_view Kind = "environment";

// The name of a variable's source and its path in small letters, in one block; NULL if out of memory.
char *TextsMake(const Variable &variable, const char *&lowered) noexcept
{
    const size_t size = Kind.size() + 1 + variable.name.size() + 1 + variable.path.size();
    void *block = size <= UINT32_MAX ? ZR_MemAlloc(static_cast<uint32_t>(size), yaml_MemHandleGet()) : nullptr;
    auto *text = static_cast<char *>(block);
    if (text == nullptr)
        return nullptr;
    char *at = std::copy(Kind.begin(), Kind.end(), text);
    *at++ = ' ';
    at = std::copy(variable.name.begin(), variable.name.end(), at);
    *at++ = '\0';
    lowered = at;
    std::transform(variable.path.begin(), variable.path.end(), at, Lower);
    return text;
}

} // namespace

bool zryaml::layers::IsNumber(std::string_view text) noexcept
{
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

void zryaml::layers::VariableApply(Stack &stack, const Variable &variable, uint32_t layer) noexcept
{
    const char *lowered = nullptr;
    char *source = TextsMake(variable, lowered);
    if (source == nullptr)
        return Starve(stack);
    WayFinder way(stack, variable, source, lowered);
    if (!IsUtf8(variable.name) || !IsUtf8(variable.text))
        Tell(stack, {source}, "the variable is not valid UTF-8");
    else if (way.Go() && !stack.incomplete && SourceAdd(stack, layer, Kind.data(), variable.name))
        ValueSet(stack, way.steps, way.Count(), variable.text, way.HowRead());
    ZR_MemFree(source, yaml_MemHandleGet());
}
