#include "PackCommand.h"

#include "ChangeRecorder.h"
#include "Findings.h"
#include "InputFiles.h"
#include "Loader.h"
#include "OutputFile.h"
#include "PackedMap.h"
#include "PackedRecord.h"
#include "PropertyInstances.h"
#include "Session.h"

#include <iostream>
#include <stdexcept>

namespace OviTool {

const char* PackCommand::GetDescription() const {
    return "Pack the values of an asset into a binary record, and print what lies where";
}

void PackCommand::Declare(CLI::App& app) {
    constexpr std::size_t kLargestOffset = 1u << 30;
    schema_.Declare(app);
    app.add_option("--asset", asset_, "The asset to pack")->type_name("NAME")->required();
    app.add_option("--property", property_, "Pack only this property (Chair.height)")
        ->type_name("FULLNAME");
    app.add_option("--offset", offset_, "Begin the record at this offset of a larger block")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{0}, kLargestOffset));
    app.add_option("-o,--output", output_, "Write the record to this file")->type_name("FILE");
    DeclareFormat(app, format_, {"text", "json"}, "How to print the map");
    app.add_flag("--hex", hex_, "Also print the bytes of each value");
    app.add_option("SCENE", scene_, "The scene (.asset) file")->required();
}

int PackCommand::Run() {
    const Session session;
    Findings findings;
    InputFiles inputs(findings);
    schema_.AddTo(inputs);
    const std::size_t index = inputs.Add(scene_);
    if (index != InputFiles::kNone && inputs.GetAll()[index].kind != InputFile::Kind::kScene)
        throw std::runtime_error("'" + scene_ + "' is no scene (.asset) file");
    const ChangeRecorder recorder;
    LoadFiles(inputs.GetAll(), findings);
    if (index != InputFiles::kNone)
        Pack(recorder, findings);
    findings.Report();
    return findings.GetExitCode();
}

void PackCommand::Pack(const ChangeRecorder& recorder, Findings& findings) const {
    OviAsset* const asset = OviAssetManager_GetAsset(asset_.c_str());
    if (!asset) {
        findings.Add({OVI_LEVEL_ERROR, scene_, -1, "Asset not found: '" + asset_ + "'"});
        return;
    }
    PackedRecord record(recorder, offset_);
    for (OviPropertyInstance* next : PropertyInstances().Find(asset)) {
        OviProperty* const property = OviPropertyInstance_GetProperty(next);
        if (property_.empty() || property_ == OviProperty_GetFullName(property))
            record.Add(next);
    }
    if (!property_.empty() && record.GetValues().empty()) {
        findings.Add({OVI_LEVEL_ERROR, scene_, -1,
                      "Property not found: '" + property_ + "' in the asset '" + asset_ + "'"});
        return;
    }
    record.Verify();
    if (!output_.empty())
        WriteFile(output_, record.GetBytes());
    PackedMap map(record, recorder, asset);
    if (format_ == "json")
        map.PrintJson(std::cout, hex_);
    else
        map.PrintText(std::cout, hex_);
}

} // namespace OviTool
