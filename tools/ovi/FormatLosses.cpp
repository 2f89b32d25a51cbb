#include "FormatLosses.h"

#include "Findings.h"
#include "XmlContent.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace OviTool {

namespace {

using Subject = std::pair<std::size_t, std::string>; ///< A place and an attribute in it.

/// All values that a file gives to each attribute.
using Values = std::map<Subject, std::vector<std::string>>;

Values CollectValues(const XmlContent& content) {
    Values values;
    for (const XmlStatement& statement : content.GetStatements())
        values[{statement.place, statement.attribute}].push_back(statement.value);
    return values;
}

/// What the new text does to a statement of the old one; empty when it keeps it.
std::string DescribeLoss(const XmlStatement& statement, const Values& after) {
    const auto found = after.find({statement.place, statement.attribute});
    const std::string element = "<" + statement.element + ">";
    if (found == after.end())
        return statement.attribute.empty()
                   ? "Formatting would lose the element " + element
                   : "Formatting would lose '" + statement.attribute + "' of " + element;
    const bool isKept = std::any_of(
        found->second.begin(), found->second.end(), [&statement](const std::string& value) {
            return FormatRules::SayTheSame(statement.attribute, statement.value, value);
        });
    if (isKept)
        return {};
    return "Formatting would change '" + statement.attribute + "' of " + element + " from '" +
           statement.value + "' to '" + found->second.front() + "'";
}

std::size_t ReportStatements(const FormattedFile& file, int level, const XmlContent& before,
                             const Values& after, Findings& findings) {
    std::size_t count = 0;
    std::set<std::size_t> lostPlaces;
    for (const XmlStatement& statement : before.GetStatements()) {
        if (lostPlaces.count(statement.place) > 0)
            continue; // with all its attributes
        const std::string loss = DescribeLoss(statement, after);
        if (loss.empty())
            continue;
        if (statement.attribute.empty())
            lostPlaces.insert(statement.place);
        findings.Add({level, file.path, statement.line, loss});
        ++count;
    }
    return count;
}

/// A template's views are written with it, also those that another file gave it.
std::size_t ReportForeignViews(const FormattedFile& file, int level, const XmlContent& after,
                               const Values& before, Findings& findings) {
    std::size_t count = 0;
    for (const XmlStatement& statement : after.GetStatements()) {
        if (statement.element != "view" || statement.attribute != "name" ||
            before.count({statement.place, statement.attribute}) > 0)
            continue;
        findings.Add({level, file.path, -1,
                      "Formatting would add the view '" + statement.value +
                          "', which another file defines"});
        ++count;
    }
    return count;
}

void ReportExtras(const FormattedFile& file, const XmlContent& before, const XmlContent& after,
                  Findings& findings) {
    std::set<std::string> kept;
    for (const XmlExtra& comment : after.GetComments())
        kept.insert(comment.what);
    for (const XmlExtra& comment : before.GetComments()) {
        if (!comment.what.empty() && kept.count(comment.what) == 0)
            findings.Add({OVI_LEVEL_WARNING, file.path, comment.line,
                          "Formatting does not keep this comment"});
    }
    for (const XmlExtra& extra : before.GetExtras())
        findings.Add(
            {OVI_LEVEL_WARNING, file.path, extra.line, "Formatting does not keep " + extra.what});
}

} // namespace

std::size_t ReportLosses(const FormattedFile& file, bool force, Findings& findings) {
    const FormatRules rules(file.isScene);
    XmlPlaces places;
    const XmlContent before(file.before, rules, places);
    const XmlContent after(file.after, rules, places);
    const int level = force ? OVI_LEVEL_WARNING : OVI_LEVEL_ERROR;
    const std::size_t count =
        ReportStatements(file, level, before, CollectValues(after), findings) +
        ReportForeignViews(file, level, after, CollectValues(before), findings);
    ReportExtras(file, before, after, findings);
    return count;
}

} // namespace OviTool
