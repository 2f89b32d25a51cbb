#include "xml/Tokenizer.h"

#include "core/ByteStreams.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Kor;
using namespace std::string_literals;

namespace {

using Tokens = std::vector<std::string>;

class TokenRecorder : public ITokenSink {
public:
    void Token(const char* bytes, size_t length) override { tokens.emplace_back(bytes, length); }

    Tokens tokens;
};

Tokens SplitInBlocks(std::string_view text, size_t blockSize) {
    TokenRecorder recorder;
    Tokenizer tokenizer(blockSize);
    tokenizer.SetTokenSink(&recorder);
    MemorySource source(text);
    EXPECT_TRUE(tokenizer.Parse("test", source));
    return recorder.tokens;
}

Tokens Split(std::string_view text) {
    const Tokens tokens = SplitInBlocks(text, Parser::kDefaultBlockSize);
    for (const size_t blockSize : {size_t{1}, size_t{2}, size_t{3}, size_t{7}, size_t{4096}})
        EXPECT_EQ(SplitInBlocks(text, blockSize), tokens) << "in blocks of " << blockSize;
    return tokens;
}

} // namespace

TEST(Tokenizer, FindsNothingInAnEmptyText) {
    EXPECT_EQ(Split(""), Tokens());
    EXPECT_EQ(Split(" \t\r\0"s), Tokens());
}

TEST(Tokenizer, SplitsAtBlanksAndDropsThem) {
    EXPECT_EQ(Split(" ab\tcd \x01 ef\0g "s), (Tokens{"ab", "cd", "ef", "g"}));
}

TEST(Tokenizer, SplitsBetweenWordsAndOtherBytes) {
    EXPECT_EQ(Split("ab+=c_1-`Z{}"), (Tokens{"ab", "+=", "c_1", "-", "`Z", "{}"}));
    EXPECT_EQ(Split("a\xC3\xA4z"), (Tokens{"a", "\xC3\xA4", "z"}));
}

TEST(Tokenizer, TakesQuotesAndParenthesesOneByOne) {
    EXPECT_EQ(Split("f((a,'b\"\"))"),
              (Tokens{"f", "(", "(", "a", ",", "'", "b", "\"", "\"", ")", ")"}));
}

TEST(Tokenizer, TakesEveryNewlineForATokenAndALine) {
    EXPECT_EQ(Split("a\n\n b\n"), (Tokens{"a", "\n", "\n", "b", "\n"}));
    Tokenizer tokenizer;
    MemorySource source("a\n\n b\n");
    EXPECT_TRUE(tokenizer.Parse("test", source));
    EXPECT_EQ(tokenizer.GetLineNumber(), 4);
}

TEST(Tokenizer, HandsOverTheLastTokenAtTheEnd) {
    EXPECT_EQ(Split("a last"), (Tokens{"a", "last"}));
    EXPECT_EQ(Split("a ("), (Tokens{"a", "("}));
}

TEST(Tokenizer, KeepsLongTokensWhole) {
    const std::string word(1'000'000, 'x');
    EXPECT_EQ(SplitInBlocks("a " + word + " b", 1000), (Tokens{"a", word, "b"}));
}
