#pragma once

#include "app/AppDelegate.h"
#include "support/HeadlessTest.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillbar {

using Names = std::vector<std::string>;

/// The program on the recording backend, with a stored configuration of the test's choice.
class AppFixture : public test::HeadlessTest {
protected:
    ~AppFixture() override { app.reset(); }

    /// A person past the first launches, with these pins.
    [[nodiscard]] static Config settled(Names pinned);

    /// Starts the program with that configuration; every pinned shortcut exists unless the tool's
    /// listing was set.
    AppDelegate& start(Config const& config);

    /// What the tool lists; nothing for one that does not answer.
    void setListing(std::optional<std::string> listing);
    void setRun(std::string const& name, headless::ChildScript const& script);

    [[nodiscard]] platform::MenuItem const& item(std::string const& title) const;
    [[nodiscard]] platform::StatusButton const& button() const;
    /// The names of the shortcuts that were run, in order.
    [[nodiscard]] Names runNames() const;
    /// At how many milliseconds each was run.
    [[nodiscard]] std::vector<long> runTimes() const;

    std::shared_ptr<AppDelegate> app;

private:
    bool hasListing_ = false;
};

} // namespace quillbar
