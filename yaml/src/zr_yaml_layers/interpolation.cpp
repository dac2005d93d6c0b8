// SPDX-License-Identifier: Apache-2.0
// Puts texts in the place of references, in the plain and double-quoted scalars of files and texts. A scalar that is
// referred to is finished first; what is put in is not looked at again. The bytes that are made, and the elements
// that are passed on the way to what is referred to, are charged to the document as the bytes of its aliases are.
#include "layers_internal.h"
#include "reference.h"

#include <algorithm>
#include <cstring>

using namespace zryaml;
using namespace zryaml::layers;

namespace {

constexpr uint32_t ChainMax = 256;      // scalars that refer to one another
constexpr uint64_t OwnBytesFactor = 16; // as for aliases
constexpr size_t TellLength = 200;      // of a reference in a sentence

using Text = GrowingArray<char>;

class Interpolator {
public:
    explicit Interpolator(Stack &stack) noexcept : m_stack(stack)
    {
        const YamlHandle &document = *stack.document;
        const uint64_t allowed = document.stLimits.ulCopyBytes + OwnBytesFactor * document.ulOwnBytes;
        m_left = allowed > document.ulCopyCharge ? allowed - document.ulCopyCharge : 0;
    }

    // Finishes all scalars of a value.
    void ValueGo(YamlListNode &value) noexcept
    {
        if (value.uiDataType == YAML_DATATYPE_SCALAR)
            return ScalarGo(value);
        for (YamlListNode &entry : Children(value)) {
            YamlListNode *below = value.uiDataType == YAML_DATATYPE_MAP ? FirstChild(entry) : &entry;
            if (below != nullptr && !m_ended)
                ValueGo(*below);
        }
    }

private:
    [[nodiscard]] bool IsTaken(const YamlListNode &scalar) const noexcept
    {
        const uint32_t style = StateGet(scalar, NODE_STYLE_MASK, NODE_STYLE_SHIFT);
        return (style == YAML_STYLE_PLAIN || style == YAML_STYLE_DOUBLE) && strchr(scalar.pcValue, '$') != nullptr &&
               SourceOf(m_stack, scalar).isDocument;
    }

    void ScalarGo(YamlListNode &scalar) noexcept
    {
        if ((scalar.uiState & NODE_EXPANDED) != 0 || !IsTaken(scalar))
            return;
        scalar.uiState |= NODE_EXPANDING;
        Text text;
        ++m_depth;
        if (TextMake(scalar, text) && !TextReplace(*m_stack.document, scalar, {text.begin(), text.Count()}))
            Starve();
        --m_depth;
        text.Release();
        scalar.uiState = (scalar.uiState & ~NODE_EXPANDING) | NODE_EXPANDED;
    }

    // The finished text of a scalar. False if there is none.
    bool TextMake(YamlListNode &scalar, Text &text) noexcept
    {
        std::string_view rest = scalar.pcValue;
        for (size_t dollar = rest.find('$'); dollar != std::string_view::npos; dollar = rest.find('$')) {
            if (!Put(scalar, text, First(rest, dollar)))
                return false;
            rest.remove_prefix(dollar);
            if (Begins(rest, "${")) {
                if (!ReferencePut(scalar, text, rest))
                    return false;
                StateSet(scalar, NODE_STYLE_MASK, NODE_STYLE_SHIFT, YAML_STYLE_PLAIN); // whatever it was
                continue;
            }
            if (!Put(scalar, text, "$"))
                return false;
            rest.remove_prefix(Begins(rest, "$$") ? 2 : 1);
        }
        return Put(scalar, text, rest);
    }

    bool Put(const YamlListNode &scalar, Text &text, std::string_view more) noexcept
    {
        const char *sentence = "interpolation makes too much text";
        return Charge(scalar, more.size() <= UINT32_MAX ? more.size() : UINT64_MAX, sentence) &&
               (text.Add(more.data(), static_cast<uint32_t>(more.size())) || Starve());
    }

    // Takes bytes or steps off what the document may use.
    bool Charge(const YamlListNode &scalar, uint64_t amount, const char *sentence) noexcept
    {
        if (amount <= m_left) {
            m_left -= amount;
            return true;
        }
        Tell(m_stack, SpotFor(scalar, "the limit is ulCopyBytes"), "%s", sentence);
        m_ended = true;
        return false;
    }

    // Puts the text of the reference that the rest begins with, and takes it off the rest.
    bool ReferencePut(YamlListNode &scalar, Text &text, std::string_view &rest) noexcept
    {
        const Reference reference = ReferenceRead(rest);
        if (reference.written.data() == nullptr)
            return Refuse(scalar, "write '$$' for a dollar", "'", rest, "' is never closed");
        rest.remove_prefix(reference.written.size());
        const char *found = nullptr;
        if (reference.name.empty())
            return Refuse(scalar, "write '$$' for a dollar", "'", reference.written, "' names nothing");
        if (!(reference.isVariable ? VariableFind(scalar, reference, found) : KeyedFind(scalar, reference, found)))
            return false;
        if (found != nullptr && (found[0] != '\0' || reference.otherwise == Otherwise::Nothing))
            return Put(scalar, text, found);
        if (reference.otherwise == Otherwise::Text)
            return Put(scalar, text, reference.tail);
        return Absent(scalar, reference, found == nullptr);
    }

    bool Absent(const YamlListNode &scalar, const Reference &reference, bool unset) noexcept
    {
        if (!reference.tail.empty()) // a sentence of the file's own
            return Refuse(scalar, "", "", reference.tail, "");
        const char *before = reference.isVariable ? "the environment variable '" : "the value at '";
        return Refuse(scalar, "a text to take instead is written ${name:-text}", before, reference.name,
                      !unset                 ? "' is empty"
                      : reference.isVariable ? "' is not set"
                                             : "' is not there");
    }

    bool VariableFind(const YamlListNode &scalar, const Reference &reference, const char *&found) noexcept
    {
        found = VariableGet(m_stack, reference.name);
        return found == nullptr || IsUtf8(found) ||
               Refuse(scalar, "", "the environment variable '", reference.name, "' is not valid UTF-8");
    }

    bool KeyedFind(const YamlListNode &scalar, const Reference &reference, const char *&found) noexcept
    {
        const Followed followed = PathFollow(*m_stack.document, reference.name);
        YamlListNode *value = followed.value;
        if (!Charge(scalar, followed.steps, "references lead through too many elements"))
            return false;
        if (followed.malformed)
            return Refuse(scalar, "", "'", reference.name, "' is no key path");
        if (value == nullptr)
            return true;
        if (value->uiDataType != YAML_DATATYPE_SCALAR)
            return Refuse(scalar, "only the text of a scalar can be taken", "the value at '", reference.name,
                          "' is no scalar");
        if ((value->uiState & NODE_EXPANDING) != 0)
            return Refuse(scalar, "", "'", reference.written, "' leads back to this text");
        if (m_depth == ChainMax)
            return Refuse(scalar, "", "'", reference.written, "' is the end of too long a chain of references");
        if (!m_stack.document->pstLayering->references.Add({&scalar, value}))
            return Starve();
        ScalarGo(*value);
        found = value->pcValue;
        return !m_ended;
    }

    static Spot SpotFor(const YamlListNode &scalar, const char *hint) noexcept
    {
        Spot spot = SpotOf(scalar);
        spot.hint = hint;
        spot.code = YAML_ERR_EXPAND;
        return spot;
    }

    // Tells what is wrong with a scalar, in a sentence around a text.
    bool Refuse(const YamlListNode &scalar, const char *hint, const char *before, std::string_view about,
                const char *after) noexcept
    {
        const auto length = static_cast<int>(std::min(about.size(), TellLength));
        Tell(m_stack, SpotFor(scalar, hint), "%s%.*s%s", before, length, about.data(), after);
        return false;
    }

    bool Starve() noexcept
    {
        layers::Starve(m_stack);
        m_ended = true;
        return false;
    }

    Stack &m_stack;
    uint64_t m_left;      // bytes that may be made
    uint32_t m_depth = 0; // scalars that are not finished
    bool m_ended = false; // nothing more can be made
};

} // namespace

void zryaml::layers::Interpolate(Stack &stack) noexcept
{
    if (YamlListNode *top = FirstChild(stack.document->stRoot))
        Interpolator(stack).ValueGo(*top);
}
