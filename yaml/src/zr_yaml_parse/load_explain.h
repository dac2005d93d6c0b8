// SPDX-License-Identifier: Apache-2.0
// Finds out, after a load has failed, where in the text the person went wrong and says it in plain words. libyaml's own
// message often points at the place where it gave up instead. Nothing here runs for a load that succeeds.
#pragma once

#include "source.h"
#include "text_decoder.h"

namespace zryaml::parse {

// Each puts place, sentence and hint into the error record where it knows better than what is there.

// Of a file that could not be opened, by errno.
void OpenErrorExplain(const char *path, int openError) noexcept;
// Of a failed parse call.
void ParseErrorExplain(const yaml_parser_t &parser, const Source &source) noexcept;
// Of what begins at a byte of the source: its place alone.
void OffsetExplain(const Source &source, uint64_t offset) noexcept;
// Of a construct that the library itself refuses; whether it is the whole document.
void RefusalExplain(const Source &source, const Place &place, bool isDocument) noexcept;

} // namespace zryaml::parse
