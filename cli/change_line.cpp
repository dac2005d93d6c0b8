// SPDX-License-Identifier: Apache-2.0
#include "change_line.h"
#include "text.h"

namespace zryaml::cli {

namespace {

// A value as a line shows it; an empty map or sequence as such.
std::string shown(const Redactor &redactor, const Value &value)
{
    if (value.is_scalar())
        return visible_text(redactor.text(value));
    return value.is_map() ? "{}" : "[]";
}

} // namespace

std::string change_line(const Redactor &old_redactor, const Redactor &new_redactor, const YamlChange &change)
{
    const Value old_value(change.pstOld);
    const Value new_value(change.pstNew);
    switch (change.uiKind) {
    case YAML_CHANGE_ADDED:
        return "+ " + visible_text(new_value.path()) + ": " + shown(new_redactor, new_value);
    case YAML_CHANGE_REMOVED:
        return "- " + visible_text(old_value.path()) + ": " + shown(old_redactor, old_value);
    default:
        return "~ " + visible_text(new_value.path()) + ": " + shown(old_redactor, old_value) + " -> " +
               shown(new_redactor, new_value);
    }
}

} // namespace zryaml::cli
