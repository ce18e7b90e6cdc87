#pragma once

#include "platform/linux/system/FileDescriptor.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quillbar::platform {

/// How long and how much is read of a child.
struct OutputLimits {
    /// The usual child ends within it, so that its caller need not reckon with other events.
    std::chrono::milliseconds withoutEvents { 50 };
    std::chrono::milliseconds inAll { std::chrono::seconds(10) };
    std::size_t size = std::size_t { 64 } * 1024 * 1024;
};

/// Reads what a child writes until it has exited, and kills one that goes beyond the limits,
/// together with what it started. Main thread.
class OutputReader {
public:
    /// Takes the child and the reading end of the pipe that it writes to.
    OutputReader(pid_t child, FileDescriptor pipe, OutputLimits const& limits);
    OutputReader(OutputReader const&) = delete;
    OutputReader& operator=(OutputReader const&) = delete;
    ~OutputReader();

    /// The whole output; nothing when the child was killed. Call once.
    [[nodiscard]] std::optional<std::string> readUntilExit();

private:
    [[nodiscard]] bool isTooLong() const { return output_.size() > limits_.size; }
    [[nodiscard]] bool isOver() const { return hasExited_ || isTooLong(); }
    void waitBlocked();
    void waitServingEvents(std::chrono::milliseconds longest);
    void checkExit();
    std::size_t read(std::size_t limit);
    void readAvailable() { read(buffer_.size()); }
    void readRest();

    pid_t child_;
    FileDescriptor pipe_;
    FileDescriptor exit_;
    OutputLimits limits_;
    bool hasExited_ = false;
    bool isAtEnd_ = false;
    std::string output_;
    std::array<char, 65536> buffer_ {};
};

/// readChildOutput() within other limits.
[[nodiscard]] std::optional<std::string> readChildOutput(
    std::vector<std::string> const& arguments, OutputLimits const& limits);

} // namespace quillbar::platform
