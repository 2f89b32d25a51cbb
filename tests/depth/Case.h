#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// A figure of a run: the processor time that a step took, or the size of what it made.
struct Figure {
    std::string name;
    const char* unit;
    double value;
};

/// One run of a case at one size: it has the library in use, an empty directory, and notes how long
/// each step takes. A step that does not give what it should ends the run.
class Run {
public:
    Run(std::filesystem::path directory, int size);
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// How deep the case goes.
    int Size() const { return size_; }

    /// The path of a file in the run's directory.
    std::string Path(const std::string& name) const;

    /// Writes a file; making the input is not measured.
    std::string Write(const std::string& name, const std::string& text) const;

    /// Does a step and notes its time; throws what went wrong when it gives false or when
    /// something was reported.
    void Step(const char* name, const std::function<bool()>& work);

    /// Notes how large a file is that a step wrote: indented, it grows with the square of the
    /// depth.
    void NoteSize(const std::string& path);

    const std::vector<Figure>& GetFigures() const { return figures_; }

private:
    std::filesystem::path directory_;
    int size_;
    std::vector<Figure> figures_;
};

/// A kind of input whose depth the input itself decides.
struct Case {
    const char* name;
    const char* unit; ///< what the size counts
    int size;         ///< the smaller one of the two sizes
    void (*run)(Run& run);
};

/// All cases, in the order of the table.
const std::vector<Case>& GetCases();

/// What a program does that runs cases: reads `[--scale PERCENT] [--only PART-OF-NAME] DIRECTORY`,
/// prints the head of the table, and runs the cases whose names have the part, at that many percent
/// of their sizes. Gives the exit code: 0 when every run gave true.
int RunCases(int argumentCount, char** arguments, const char* head, const std::vector<Case>& cases,
             bool (*run)(const Case&, const std::filesystem::path& directory, int percent));
