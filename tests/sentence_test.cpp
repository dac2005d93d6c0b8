// SPDX-License-Identifier: Apache-2.0
// What a person reads: for documents that are refused the place, the sentence and the way out.
#include "support/load_text.h"

#include <gtest/gtest.h>

namespace {

struct Refusal {
    int iLine; // of this file
    std::string_view text;
    uint32_t uiLine, uiColumn;
    const char *pcSentence, *pcHint;
};

constexpr Refusal g_astRefusal[] = {
    {__LINE__, "a: 1\nb: 2\na: 3", 3, 1, "the key 'a' stands twice in one map", "rename or remove one of them"},
    {__LINE__, "a: *base", 1, 4, "there is no anchor '&base' for this alias",
     "write '&base' before it, on something that has ended; quote a text that begins with '*'"},
    {__LINE__, "\"a\\n\": 1\n\"a\\n\": 2", 2, 1, "the key 'a?' stands twice in one map",
     "rename or remove one of them"},
    {__LINE__, "a: 1\n<<<<<<< HEAD\nb: 2\n=======\nb: 3\n>>>>>>> topic", 2, 1, "a merge conflict is left in the file",
     "keep one of its two versions, and remove the lines with <<<<<<<, ======= and >>>>>>>"},
    {__LINE__, "=======\na: 1", 1, 1, "a merge conflict is left in the file",
     "keep one of its two versions, and remove the lines with <<<<<<<, ======= and >>>>>>>"},
    {__LINE__, "- a: {b: 1,\n>>>>>>> topic\n  c: 2}", 2, 1, "a merge conflict is left in the file",
     "keep one of its two versions, and remove the lines with <<<<<<<, ======= and >>>>>>>"},
    {__LINE__, "name: {{ app }}", 1, 7, "a value that begins with '{{' needs quotes", "quote the text: '{{ app }}'"},
    {__LINE__, "{% if x %}\na: 1", 1, 1, "the '{%' of a template cannot stand in a YAML file",
     "fill in the template before the file is loaded"},
    {__LINE__, "{a: 1,\n [b]: 2}", 2, 2, "a sequence cannot be a key",
     "only a text can be a key: is a bracket before it left open?"},
    {__LINE__, "glob: *.txt", 1, 7, "'*' begins an alias, but what follows is not a name", "quote the text: '*.txt'"},
    {__LINE__, "run: & wait", 1, 6, "'&' begins an anchor, but what follows is not a name", "quote the text: '& wait'"},
    {__LINE__, "see: !!", 1, 6, "'!' begins a tag, but what follows is not a name", "quote the text: '!!'"},
    {__LINE__, "user: @me  # who", 1, 7, "a text cannot begin with '@'", "quote the text: '@me'"},
    {__LINE__, "done: %d items", 1, 7, "a text cannot begin with '%'", "quote the text: '%d items'"},
    {__LINE__, "`a: 1", 1, 1, "a text cannot begin with '`'", "quote the text: '`a'"},
    {__LINE__, "list: [*, b]", 1, 8, "'*' begins an alias, but what follows is not a name", "quote the text: '*'"},
    {__LINE__, "q: !x!y z", 1, 4, "the handle of this tag is not declared",
     "declare it with %TAG, or quote the text if it is no tag"},
    {__LINE__, "dir: \"C:\\data\"", 1, 9, "'\\d' means nothing in double quotes",
     "write '\\\\' for a backslash, or put the text in single quotes"},
    {__LINE__, "dir: \"C:\\Users\"", 1, 9, "'\\U' must be followed by the 8 hexadecimal digits of a character",
     "write '\\\\' for a backslash, or put the text in single quotes"},
    {__LINE__, "t: 'it's'", 1, 8, "text follows the closing quote",
     "write '' for a single quote within single quotes, or put the text in double quotes"},
    {__LINE__, "t: \"say \"hi\" now\"", 1, 10, "text follows the closing quote",
     "write \\\" for a double quote within double quotes, or put the text in single quotes"},
    {__LINE__, "t: \"he said\" loud", 1, 14, "text follows the closing quote",
     "put all of the text in quotes, or none of it"},
    {__LINE__, "a: \"open\nb: \"x\"", 1, 4, "this quote is closed only in line 2", "close it where the text ends"},
    {__LINE__, "a: 'open\nb: 1", 1, 4, "the quote that opens here is not closed",
     "close it where the text ends; a text that begins with ' goes in double quotes"},
    {__LINE__, "a: ['it's', b]", 1, 9, "text follows the closing quote",
     "write '' for a single quote within single quotes, or put the text in double quotes"},
    {__LINE__, "a: \"x\",\nb: 1", 1, 7, "a ',' follows a value that is not in brackets", "remove the ','"},
    {__LINE__, "a: [1, 2]]", 1, 10, "this ']' closes no bracket", "remove it, or open the bracket"},
    {__LINE__, "re: [a-z]+", 1, 10, "nothing more can follow this value", "quote the text: '[a-z]+'"},
    {__LINE__, "a: &x &y 1", 1, 7, "nothing more can follow this value", "quote the text: '&x &y 1'"},
    {__LINE__, "a: [1, 2\nb: 3", 1, 4, "the '[' that opens here is not closed", "a ']' is missing before line 2"},
    {__LINE__, "a: {b: [1, 2}", 1, 13, "this '}' does not close the '[' of line 1, column 8", "close it with ']'"},
    {__LINE__, "a: [1,", 1, 4, "the '[' that opens here is not closed", "a ']' is missing"},
    {__LINE__, "a: [\n  {x: 1}\n  {y: 2}\n]", 3, 3, "a ',' is missing before this",
     "the '[' of line 1, column 4 is still open here"},
    {__LINE__, "{\"a\" 1}", 1, 6, "a ',' or ':' is missing before this",
     "the '{' of line 1, column 1 is still open here"},
    {__LINE__, "{\"a\": 1 \"b\": 2}", 1, 12, "a second ':' stands in one element",
     "is a ',' missing before the key, or at the end of the line before?"},
    {__LINE__, "a: [1,,2]", 1, 7, "a value is missing before this ','", "remove the ',' or write a value"},
    {__LINE__, "{a: 1, b:{}}", 1, 9, "a space is missing after this ':'", "write ': '"},
    {__LINE__, "a: , b", 1, 4, "a value cannot begin with ','", "quote the text: ', b'"},
    {__LINE__, "a: 1\n}", 2, 1, "this '}' closes no bracket", "remove it, or open the bracket"},
    {__LINE__, "a:\n\tb: 1", 2, 1, "a tab cannot indent a line", "indent with spaces"},
    {__LINE__, "-\ta", 1, 2, "a tab cannot stand here", "use spaces"},
    {__LINE__, "a: 1\nport:8080\nb: 2", 2, 5, "a space is missing after this ':'", "write 'port: 8080'"},
    {__LINE__, "images:\n  - nginx:1.2\n    tag: x", 3, 8, "a key cannot stand below the text of the line before",
     "put a space after the ':' of the line before if that is a key, else indent this line less"},
    {__LINE__, "a: b: c", 1, 5, "a second ':' stands in the value of a key", "quote the text: 'b: c'"},
    {__LINE__, "web:\n  port: 80\n    tls: no", 3, 8, "a key cannot stand below the text of the line before",
     "begin it in column 3 like the key before it"},
    {__LINE__, "web:\n  port\n    tls: no", 3, 8, "a key cannot stand below the text of the line before",
     "end the line before with ':' if that is a key, else indent this line less"},
    {__LINE__, "a:\n  b: 1\n c: 2", 3, 2, "this line begins in a column that fits none of the lines before",
     "begin it in column 3 to go on with the line before, or in column 1 with line 1"},
    {__LINE__, "- a\nb: 1", 2, 1, "a key stands among the elements of a sequence",
     "begin it with '- ', or in column 3 if it goes on with the line before"},
    {__LINE__, "a: 1\n- b", 2, 1, "an element of a sequence stands among the keys of a map",
     "give the sequence a key of its own, and put the '-' below it"},
    {__LINE__, "a: 1\nsome words\nb: 2", 2, 1, "this is neither 'key: value' nor '- element'",
     "a key needs ': ' behind it, and a line that continues a text must be indented"},
    {__LINE__, "a: - b", 1, 4, "an element of a sequence cannot stand here",
     "begin the sequence on a line of its own, or quote a text that begins with '- '"},
    {__LINE__, "a: ? b", 1, 4, "'?' begins a key, and none can stand here", "quote a text that begins with '? '"},
    {__LINE__, "a = 1", 1, 1, "'=' does not separate a key from its value", "write 'a: 1'"},
    {__LINE__, "// all\na: 1", 1, 1, "this is not a comment in YAML", "a comment begins with '#'"},
    {__LINE__, "-a\n-b", 1, 1, "a space is missing after this '-'", "write '- a'"},
    {__LINE__, "a: > b", 1, 4, "a block of text begins on the line below its '|' or '>'",
     "put the text below, indented; quote a text that begins with '|' or '>'"},
    {__LINE__, "a: |0", 1, 5, "a block of text cannot be indented by 0", "write 1 to 9, or leave the number out"},
    {__LINE__, "{a: 1},", 1, 7, "a ',' follows a value that is not in brackets", "remove the ','"},
    {__LINE__, "{a: 1}\nb: 2", 2, 1, "the document ends before this",
     "a file holds one document, which is one map or one sequence"},
    {__LINE__, "%YAML 1.1\na: 1", 2, 1, "a line '---' is missing behind the directives",
     "write '---' on a line of its own before this one"},
    {__LINE__, "%YAML 3\n---\na: 1", 1, 1, "this %YAML directive has no version such as 1.1",
     "write %YAML 1.1, or remove the line"},
    {__LINE__, "%YAML x\n---\na: 1", 1, 1, "this %YAML directive has no version such as 1.1",
     "write %YAML 1.1, or remove the line"},
    {__LINE__, "%TAG ! tag:x,\n%TAG ! tag:y,\n--- [a]", 2, 1, "the handle of this %TAG directive is declared twice",
     "remove one of them"},
    {__LINE__, "%TAG x\n--- [a]", 1, 1, "a %TAG directive has a handle and a prefix",
     "write it like %TAG !e! tag:example.com,2000:"},
    {__LINE__, "%FOO\n--- [a]", 1, 1, "there is no such directive",
     "only %YAML and %TAG can begin a line with '%'; quote a text that begins with it"},
    {__LINE__, "a: 1\n---\nb: 2", 2, 1, "the file holds a second document",
     "a file holds one document: a second '---' begins another"},
    {__LINE__, "just text", 1, 1, "the document is one text, and neither a map nor a sequence",
     "a document is a map or a sequence: is a space missing after a ':' or '-'?"},
    {__LINE__, "b: &b [1]\na: {<<: *b}", 2, 9, "'<<' cannot merge the text '1' into a map",
     "what '<<' merges must be a map, or a sequence of maps"},
    {__LINE__, "a: 1\nb: x\x01", 2, 5, "the control character U+0001 cannot stand in a file",
     "remove it, or write it as '\\x..' in double quotes"},
};

// A text of ASCII in UTF-16.
std::string Wide(std::string_view text, bool bBigEndian)
{
    std::string wide = bBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char cChar : text)
        wide += bBigEndian ? std::string{'\0', cChar} : std::string{cChar, '\0'};
    return wide;
}

TEST(Refusal, NamesPlaceCauseAndWayOut)
{
    for (const Refusal &st : g_astRefusal) {
        for (const std::string &text : {std::string(st.text), Wide(st.text, false), Wide(st.text, true)}) {
            const testing::ScopedTrace trace(__FILE__, st.iLine, st.text.data());
            EXPECT_EQ(TextLoad(text), nullptr);
            const YamlErrorInfo &stError = *ZRYAML_LastErrorGet();
            EXPECT_EQ(stError.uiLine, st.uiLine);
            EXPECT_EQ(stError.uiColumn, st.uiColumn);
            EXPECT_STREQ(stError.pcMessage, st.pcSentence);
            EXPECT_STREQ(stError.pcHint, st.pcHint);
        }
    }
}

} // namespace
