#include "faults/FailureRuns.h"

#include <algorithm>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "faults/Allocations.h"
#include "faults/FaultTables.h"
#include "faults/ModelCheck.h"

namespace {

/// What a run left, as it can be seen.
struct Outcome {
    long result = 0;
    std::string state;
};

std::multiset<std::string> LinesOf(const std::string& text) {
    std::multiset<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.insert(line);
    return lines;
}

/// The lines that the step leaves alone when it succeeds and that are gone now.
std::string FindLost(const std::string& before, const std::string& after, const std::string& now) {
    const auto old = LinesOf(before);
    const auto wanted = LinesOf(after);
    const auto there = LinesOf(now);
    std::string lost;
    for (auto line = old.begin(); line != old.end(); line = old.upper_bound(*line)) {
        const size_t kept = std::min(old.count(*line), wanted.count(*line));
        if (there.count(*line) < kept)
            lost += *line + "\n";
    }
    return lost;
}

/// The first line in which two texts differ.
std::string FirstDifference(const std::string& a, const std::string& b) {
    std::istringstream one(a);
    std::istringstream other(b);
    std::string left;
    std::string right;
    while (true) {
        const bool more = static_cast<bool>(std::getline(one, left));
        const bool otherMore = static_cast<bool>(std::getline(other, right));
        if (!more && !otherMore)
            return "none";
        if (!more || !otherMore || left != right)
            return "'" + (more ? left : "") + "' beside '" + (otherMore ? right : "") + "'";
    }
}

const char* WordsFor(Promise promise) {
    switch (promise) {
    case Promise::kAllOrNothing:
        return "done or not done, and the result says which";
    case Promise::kInParts:
        return "done in part at worst; what was there before is still there";
    default:
        return "done in part at worst; everything fits together";
    }
}

/// Calls have two rows for all of them.
std::string RowOf(const std::string& name, Promise promise) {
    if (name.find('(') == std::string::npos)
        return name;
    return promise == Promise::kAllOrNothing ? "All exported functions, on one object"
                                             : "All exported functions, on many objects";
}

class Runs {
public:
    Runs(const char* name, Promise promise, const Step& step,
         const std::function<void(Model&)>& afterwards)
        : name_(name), promise_(promise), step_(step), afterwards_(afterwards) {
        before_.state = Model().Describe();
        Model model;
        after_.result = step_(model);
        if (afterwards_)
            afterwards_(model);
        after_.state = model.Describe();
        changes_ = before_.state != after_.state;
    }

    long Run(Allocations::Mode mode) {
        constexpr long kMost = 100000;
        for (long n = 1; n < kMost; ++n) {
            if (!RunOnce(n, mode))
                return n - 1;
            if (::testing::Test::HasFailure())
                return n;
        }
        ADD_FAILURE() << name_ << ": still not enough memory";
        return kMost;
    }

private:
    /// False when no allocation failed.
    bool RunOnce(long n, Allocations::Mode mode) {
        const std::string where = std::string(name_) + ", allocation " + std::to_string(n) +
                                  (mode == Allocations::kOnce ? " alone" : " and all behind it");
        SCOPED_TRACE(where);
        Model model;
        Outcome now;
        Allocations::Arm(n, mode);
        now.result = step_(model);
        Allocations::Disarm();
        const bool failed = Allocations::HasFailed();
        ExpectWhole("");
        now.state = model.Describe();
        if (promise_ == Promise::kAllOrNothing || !failed) {
            ExpectAllOrNothing(now);
        } else if (promise_ == Promise::kInParts) {
            EXPECT_EQ(FindLost(before_.state, after_.state, now.state), "");
        }
        if (afterwards_) {
            afterwards_(model);
            ExpectWhole("afterwards: ");
            const std::string then = model.Describe();
            EXPECT_TRUE(then == after_.state)
                << "afterwards: " << FirstDifference(after_.state, then);
        }
        EXPECT_TRUE(failed || now.state == after_.state)
            << FirstDifference(after_.state, now.state);
        for (const std::string& problem : CheckAfterRenaming())
            ADD_FAILURE() << "after renaming: " << problem;
        return failed;
    }

    static void ExpectWhole(const char* when) {
        for (const std::string& problem : CheckModel())
            ADD_FAILURE() << when << problem;
    }

    void ExpectAllOrNothing(const Outcome& now) const {
        const bool done = now.state == after_.state;
        EXPECT_TRUE(done || now.state == before_.state)
            << "done by half: " << FirstDifference(before_.state, now.state);
        if (done && changes_) {
            EXPECT_EQ(now.result, after_.result) << "it was done and says something else";
        } else if (!done && after_.result != 0) {
            EXPECT_NE(now.result, after_.result) << "it was not done and does not say so";
        }
    }

    const char* name_;
    Promise promise_;
    const Step& step_;
    const std::function<void(Model&)>& afterwards_;
    Outcome before_;
    Outcome after_;
    bool changes_ = false;
};

} // namespace

long RunWithFailures(const char* name, Promise promise, const Step& step,
                     const std::function<void(Model&)>& afterwards) {
    Runs runs(name, promise, step, afterwards);
    long tried = runs.Run(Allocations::kOnce);
    if (!::testing::Test::HasFailure())
        tried += runs.Run(Allocations::kFromThenOn);
    FaultTables::Note(FaultTables::kAllocations, RowOf(name, promise), tried, WordsFor(promise));
    return tried;
}
