#pragma once

#include <string>
#include <vector>

namespace OviTool {

/// The standard streams while the program runs. On Windows they carry the bytes that are written to
/// them, without a translation of line ends, and a console takes them as UTF-8.
class Console {
public:
    Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

#if defined(_WIN32)
    ~Console();

private:
    unsigned previousCodePage_ = 0;
#endif
};

/// The arguments behind the program's name, in UTF-8 on every system.
std::vector<std::string> GetArguments(int argc, char** argv);

} // namespace OviTool
