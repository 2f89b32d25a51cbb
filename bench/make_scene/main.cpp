// Makes a large scene: ovi_make_scene OUTPUT [ASSETS]

#include "SceneMaker.h"

#include "core/NumberText.h"
#include "platform/File.h"

#include <cstdio>

int main(int argumentCount, char** arguments) {
    constexpr int kDefaultCount = 100000;
    const int count = argumentCount > 2 ? Kor::ParseInt(arguments[2]) : kDefaultCount;
    const bool asksForHelp = argumentCount > 1 && arguments[1][0] == '-';
    if (argumentCount < 2 || argumentCount > 3 || asksForHelp || count < 1) {
        std::fprintf(stderr, "usage: ovi_make_scene OUTPUT [ASSETS]\n");
        return 2;
    }
    const auto file = Kor::OutputFile::Create(arguments[1]);
    if (!file || !SceneMaker(static_cast<unsigned>(count)).Write(*file) || !file->Commit()) {
        std::fprintf(stderr, "Unable to write '%s'\n", arguments[1]);
        return 1;
    }
    return 0;
}
