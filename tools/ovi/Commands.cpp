#include "Commands.h"

#include "CheckCommand.h"
#include "ShowCommand.h"

namespace OviTool {

std::vector<std::unique_ptr<Command>> MakeCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<CheckCommand>());
    commands.push_back(std::make_unique<ShowCommand>());
    return commands;
}

} // namespace OviTool
