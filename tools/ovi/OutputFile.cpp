#include "OutputFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace OviTool {

namespace {

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
    throw std::runtime_error("cannot write '" + path + "': " + reason);
}

} // namespace

void WriteFile(const std::string& path, const std::string& content) {
    std::error_code error;
    fs::path target = fs::canonical(fs::u8path(path), error); // not the link to it
    const bool exists = !error;
    if (!exists)
        target = fs::u8path(path);
    fs::path fresh = target;
    fresh += ".new";
    errno = 0;
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    if (!file)
        Fail(path, errno != 0 ? std::strerror(errno) : "cannot be opened");
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) {
        const std::string reason = std::strerror(errno);
        fs::remove(fresh, error);
        Fail(path, reason);
    }
    if (exists)
        fs::permissions(fresh, fs::status(target, error).permissions(), error);
    fs::rename(fresh, target, error);
    if (!error)
        return;
    std::error_code ignored;
    fs::remove(fresh, ignored);
    Fail(path, error.message());
}

void WriteOutput(const std::string& path, const std::string& content) {
    if (path.empty())
        std::cout << content;
    else
        WriteFile(path, content);
}

} // namespace OviTool
