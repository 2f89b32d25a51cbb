// Makes the template files that the benchmarks of schemas load: ovi_make_schema DIRECTORY [FILES]
//
// Each file defines ten templates of twenty attributes, in chains of four that extend each other,
// each template in three versions.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

constexpr int kTemplates = 10;
constexpr int kLevels = 4;
constexpr int kAttributes = 20;
constexpr const char* kTypes[] = {"INT32", "FLOAT", "STRING", "BOOL", "DOUBLE"};
constexpr const char* kDefaults[] = {"12", "0.5", "name &amp; more", "true", "1e-05"};

/// The first attributes are there from the start, the last ones come with versions 2 and 3.
int VersionOf(int attribute) {
    return attribute < kAttributes - 6 ? 1 : (attribute < kAttributes - 3 ? 2 : 3);
}

void WriteAttribute(std::ostream& out, int number) {
    const int kind = number % 5;
    out << "\t\t<attribute name='attribute_" << number << "' type='" << kTypes[kind]
        << "' default='" << kDefaults[kind] << "'";
    if (VersionOf(number) > 1)
        out << " version='" << VersionOf(number) << "'";
    out << "/>\n";
}

void WriteTemplate(std::ostream& out, const std::string& prefix, int number) {
    out << "\t<template name='" << prefix << number << "'>\n";
    if (number % kLevels > 0)
        out << "\t\t<extends template='" << prefix << number - 1 << "'/>\n";
    for (int i = 0; i < kAttributes; ++i)
        WriteAttribute(out, i);
    out << "\t</template>\n";
}

bool WriteSchemaFile(const std::filesystem::path& directory, int number) {
    std::string digits = std::to_string(number);
    digits.insert(0, 6 - std::min<size_t>(digits.size(), 6), '0');
    std::ofstream out(directory / ("file_" + digits + ".template"), std::ios::binary);
    out << "<?xml version='1.0' encoding='UTF-8'?>\n<templates package='bench'>\n";
    for (int i = 0; i < kTemplates; ++i)
        WriteTemplate(out, "Kind_" + digits + "_", i);
    out << "</templates>";
    return static_cast<bool>(out);
}

} // namespace

int main(int argumentCount, char** arguments) {
    const int files = argumentCount > 2 ? std::atoi(arguments[2]) : 1000;
    const bool asksForHelp = argumentCount > 1 && arguments[1][0] == '-';
    if (argumentCount < 2 || argumentCount > 3 || asksForHelp || files < 1) {
        std::cerr << "usage: ovi_make_schema DIRECTORY [FILES]\n";
        return 2;
    }
    std::filesystem::create_directories(arguments[1]);
    for (int i = 0; i < files; ++i) {
        if (!WriteSchemaFile(arguments[1], i)) {
            std::cerr << "cannot write into " << arguments[1] << '\n';
            return 2;
        }
    }
    return 0;
}
