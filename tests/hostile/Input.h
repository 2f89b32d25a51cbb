#pragma once

#include <cstdio>
#include <string>

/// Writes the files of the cases bit by bit, so that making them takes no memory worth mentioning.
class Input {
public:
    explicit Input(const std::string& path) : file_(std::fopen(path.c_str(), "wb")) {
        Put("<?xml version='1.0' encoding='UTF-8'?>\n");
    }
    ~Input() {
        if (file_)
            std::fclose(file_);
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    void Put(const std::string& text) {
        size_ += static_cast<long long>(text.size());
        if (file_)
            std::fwrite(text.data(), 1, text.size(), file_);
    }

    /// The same text over and over, so many bytes in all.
    void Fill(const std::string& text, long long bytes) {
        for (; bytes > 0; bytes -= static_cast<long long>(text.size()))
            Put(text);
    }

    long long GetSize() const { return size_; }

private:
    std::FILE* file_;
    long long size_ = 0;
};
