#include "TemporaryDirectory.h"

#include <random>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace OviTool {

TemporaryDirectory::TemporaryDirectory() : path_(fs::temp_directory_path()) {
    std::random_device random;
    path_ /= "ovi-" + std::to_string(random()) + "-" + std::to_string(random());
    if (!fs::create_directory(path_))
        throw std::runtime_error("cannot make the directory '" + path_.u8string() + "'");
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

} // namespace OviTool
