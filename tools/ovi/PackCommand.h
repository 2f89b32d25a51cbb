#pragma once

#include "Command.h"
#include "SchemaOptions.h"

#include <cstddef>
#include <string>

namespace OviTool {

class ChangeRecorder;
class Findings;

/// `ovi pack`: packs the values of an asset, and tells what lies where.
class PackCommand : public Command {
public:
    const char* GetName() const override { return "pack"; }
    const char* GetDescription() const override;
    void Declare(CLI::App& app) override;
    int Run() override;

private:
    void Pack(const ChangeRecorder& recorder, Findings& findings) const;

    SchemaOptions schema_;
    std::string asset_;
    std::string property_;
    std::string format_;
    std::string output_;
    std::string scene_;
    std::size_t offset_ = 0;
    bool hex_ = false;
};

} // namespace OviTool
