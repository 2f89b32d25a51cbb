// Makes a large schema: ovi_make_schema DIRECTORY [FILES]. The directory must be there.

#include "SchemaMaker.h"

#include "core/NumberText.h"
#include "platform/File.h"

#include <cstdio>

int main(int argumentCount, char** arguments) {
    constexpr int kDefaultCount = 1000;
    const int count = argumentCount > 2 ? Kor::ParseInt(arguments[2]) : kDefaultCount;
    if (argumentCount < 2 || argumentCount > 3 || count < 1) {
        std::fprintf(stderr, "usage: ovi_make_schema DIRECTORY [FILES]\n");
        return 2;
    }
    for (int i = 0; i < count; ++i) {
        const std::string path = std::string(arguments[1]) + '/' + SchemaMaker::GetFileName(i);
        const auto file = Kor::OutputFile::Create(path.c_str());
        if (!file || !SchemaMaker().Write(i, *file) || !file->Commit()) {
            std::fprintf(stderr, "Unable to write '%s'\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
