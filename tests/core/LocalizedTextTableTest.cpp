// Texts per language, compared with a map over random operations.

#include <map>
#include <random>

#include <gtest/gtest.h>

#include "core/LocalizedTextTable.h"

namespace {

using namespace Kor;

/// The lookup once more, on a map.
const char* Find(const std::map<std::string, std::string>& model, const char* language) {
    const auto exactly = [&model](const std::string& key) {
        const auto found = model.find(key);
        return found == model.end() ? nullptr : found->second.c_str();
    };
    const std::string key = language ? language : "";
    const char* text = exactly(key);
    if (!text && language && key.find('_') != std::string::npos)
        text = exactly(key.substr(0, key.find('_')));
    return text || !language ? text : exactly("");
}

std::string Readable(const char* text) {
    return text ? std::string("\"") + text + "\"" : "null";
}

TEST(LocalizedTextTable, AgreesWithAMap) {
    const char* const languages[] = {nullptr, "",   "a",    "a_b",  "a_b_c", "_",
                                     "_a",    "ab", "ab_x", "\xff", "A",     "A_"};
    LocalizedTextTable table;
    std::map<std::string, std::string> model;
    std::mt19937 random(11);
    for (int i = 0; i < 4000; ++i) {
        const char* language = languages[random() % std::size(languages)];
        const std::string key = language ? language : "";
        if (random() % 2 == 0) {
            table.Set(language, nullptr);
            model.erase(key);
        } else {
            const std::string text = std::to_string(i);
            table.Set(language, text.c_str());
            model[key] = text;
        }
        ASSERT_EQ(table.GetCount(), static_cast<int>(model.size()));
        int index = 0;
        for (const auto& [wantedKey, text] : model) {
            ASSERT_EQ(table.GetAt(index).language, wantedKey);
            ASSERT_EQ(table.GetAt(index++).text, text);
        }
        for (const char* wanted : languages)
            ASSERT_EQ(Readable(table.Find(wanted)), Readable(Find(model, wanted)));
    }
}

} // namespace
