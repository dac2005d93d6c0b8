// SPDX-License-Identifier: Apache-2.0
// The C++ face: what the rows of cases/cxx.txt cannot say, types of keys and arguments, errors of loads, and misuse.
#include <zr_yaml.hpp>

#include <gtest/gtest.h>

#include <csignal>

extern "C" __attribute__((weak)) void __gcov_exit(void); // writes down what ran; there with --coverage only

namespace {

using zryaml::Document;
using zryaml::Type;

TEST(Cxx, TakesKeysAndArgumentsOfManyTypes)
{
    const Document doc = Document::parse("a: [p, [q, r]]", "c.yml").or_throw();
    for (const zryaml::Value &stValue : {doc["a"][1][1U], doc[std::string("a")].at("[1][{}]", int8_t{1}),
                                         doc.at("{}[{}][1]", std::string_view("a"), 1ULL), doc.at("a[1][{}]", 1)})
        EXPECT_EQ(stValue.get<std::string_view>().value(), "r");
    EXPECT_EQ(doc["no"][-1].get_or(1).error().what(),
              "c.yml: the key path is malformed: an index is negative (no[-1])");
    EXPECT_EQ(doc["no"].get_or("none").value(), "none");
    EXPECT_EQ(doc["a"].expect(Type::sequence).value().size(), 2U);
    EXPECT_EQ(doc["a"].expect(Type::none).error().message, "a is a sequence, not nothing");
    EXPECT_EQ(doc["no"].expect(Type::none).error().message, "no key 'no' in the document");
    EXPECT_EQ(zryaml::Value().get<int>().error().what(), "there is no value");
}

TEST(Cxx, CarriesErrorsOfLoads)
{
    const zryaml::Error stError = Document::parse("{a: 1,\n a: 2}", "c.yml").error();
    EXPECT_EQ(stError.what(), "c.yml:2:2: the key 'a' stands twice in one map");
    EXPECT_EQ(std::tuple(stError.code, stError.first_line, stError.first_column), std::tuple(YAML_ERR_SAME, 1U, 2U));
    EXPECT_EQ(Document::parse("a: \"b").error().hint,
              "close it where the text ends; a text that begins with \" goes in single quotes");
    EXPECT_EQ(Document::load("/no").error().what(), "/no: no such file");
    EXPECT_EQ(Document::load(std::string("/\0x", 3)).error().message, "the path holds a NUL character");
    Document stFirst = Document::parse("", "c.yml").or_throw();
    const Document stSecond = std::move(stFirst);
    EXPECT_STREQ(stSecond.name(), "c.yml");
    EXPECT_EQ(stFirst.at("a").get<int>().error().what(), "there is no document (a)"); // NOLINT: that it has moved
}

TEST(Cxx, ThrowsOnlyWhenAskedTo)
{
    const Document doc = Document::parse("[300]", "c.yml").or_throw();
    try {
        (void)doc[0].get<uint8_t>().or_throw();
        FAIL() << "nothing was thrown";
    } catch (const zryaml::Exception &stException) {
        EXPECT_STREQ(stException.what(), "c.yml:1:2: '300' is out of range ([0])");
        EXPECT_EQ(stException.error().hint, "an integer from 0 to 255 is expected");
    }
    (void)std::signal(SIGABRT, [](int) { __gcov_exit != nullptr ? __gcov_exit() : void(); });
    EXPECT_DEATH((void)doc[1].get<int>().value(), "there is no .1");
    EXPECT_DEATH((void)doc[0].get<int>().error(), "holds a value");
}

} // namespace
