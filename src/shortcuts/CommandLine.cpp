#include "shortcuts/CommandLine.h"

#include <utility>

namespace quillbar::shortcuts {

namespace {

class CommandLineParser {
public:
    explicit CommandLineParser(std::string_view text)
        : rest_(text)
    {
    }

    std::optional<std::vector<std::string>> parse()
    {
        while (!rest_.empty()) {
            auto const character = take();
            if (isBlank(character))
                finishArgument();
            else if (!takePart(character))
                return std::nullopt;
        }
        finishArgument();
        if (arguments_.empty() || arguments_.front().empty())
            return std::nullopt;
        return std::move(arguments_);
    }

private:
    static bool isBlank(char character)
    {
        return character == ' ' || character == '\t' || character == '\n';
    }

    char take()
    {
        auto const character = rest_.front();
        rest_.remove_prefix(1);
        return character;
    }

    bool takePart(char character)
    {
        if (character == '"' || character == '\'')
            return takeQuotation(character);
        if (character == '\\') {
            if (rest_.empty())
                return false;
            append(take());
        } else if (character == '%') {
            takeFieldCode();
        } else {
            append(character);
        }
        return true;
    }

    bool takeQuotation(char mark)
    {
        isArgument_ = true;
        while (!rest_.empty()) {
            auto const character = take();
            if (character == mark)
                return true;
            if (character == '%')
                takeFieldCode();
            else if (character == '\\' && mark == '"' && isEscapable())
                append(take());
            else
                append(character);
        }
        return false;
    }

    [[nodiscard]] bool isEscapable() const
    {
        return !rest_.empty() && std::string_view("\"`$\\").find(rest_.front()) != rest_.npos;
    }

    void takeFieldCode()
    {
        if (rest_.empty() || take() == '%')
            append('%');
    }

    void append(char character)
    {
        argument_ += character;
        isArgument_ = true;
    }

    /// An argument of field codes alone is none; an empty quotation is one.
    void finishArgument()
    {
        if (isArgument_)
            arguments_.push_back(std::exchange(argument_, {}));
        isArgument_ = false;
    }

    std::string_view rest_;
    std::string argument_;
    bool isArgument_ = false;
    std::vector<std::string> arguments_;
};

} // namespace

std::optional<std::vector<std::string>> splitCommandLine(std::string_view exec)
{
    return CommandLineParser(exec).parse();
}

} // namespace quillbar::shortcuts
