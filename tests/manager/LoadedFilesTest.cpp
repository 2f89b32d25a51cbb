#include "manager/LoadedFiles.h"

#include <gtest/gtest.h>

using Kor::LoadedFiles;

namespace {

using Paths = std::vector<std::string>;

TEST(LoadedFiles, KeepsEachSpellingOnce) {
    LoadedFiles files;
    for (const char* path : {"b.template", "a.template", "B.template", "a.template"})
        files.Add(path);
    EXPECT_EQ(files.GetAll(), (Paths{"B.template", "a.template", "b.template"}));
}

TEST(LoadedFiles, FindsAndRemovesTheExactSpelling) {
    LoadedFiles files;
    files.Add("A.template");
    files.Add("a.template");
    EXPECT_TRUE(files.Contains("a.template"));
    EXPECT_FALSE(files.Contains("a.Template"));
    EXPECT_FALSE(files.Contains("b.template"));
    files.Remove("a.template");
    files.Remove("a.Template");
    files.Remove("b.template");
    EXPECT_EQ(files.GetAll(), Paths{"A.template"});
    EXPECT_FALSE(files.Contains("a.template"));
}

TEST(LoadedFiles, RemovesAllSpellingsAtOnce) {
    LoadedFiles files;
    for (const char* path : {"A.template", "a.template", "b.template"})
        files.Add(path);
    files.RemoveInAnyCase("a.TEMPLATE");
    files.RemoveInAnyCase("c.template");
    EXPECT_EQ(files.GetAll(), Paths{"b.template"});
}

} // namespace
