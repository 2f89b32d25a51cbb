#include "Commands.h"

#include "CheckCommand.h"
#include "FormatCommand.h"
#include "GraphCommand.h"
#include "PackCommand.h"
#include "PackagesCommand.h"
#include "ShowCommand.h"

namespace OviTool {

std::vector<std::unique_ptr<Command>> MakeCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<CheckCommand>());
    commands.push_back(std::make_unique<ShowCommand>());
    commands.push_back(std::make_unique<GraphCommand>());
    commands.push_back(std::make_unique<PackagesCommand>());
    commands.push_back(std::make_unique<PackCommand>());
    commands.push_back(std::make_unique<FormatCommand>());
    return commands;
}

} // namespace OviTool
