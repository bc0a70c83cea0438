#include "common/arguments.h"

#include <charconv>
#include <system_error>

#include "common/neutral_text.h"

namespace veltrix {

bool Arguments::Next() {
    if (next_ >= arguments_.size()) return false;
    at_ = next_++;
    return true;
}

std::string Arguments::Name() const {
    const std::string& argument = arguments_[at_];
    return IsOption() ? argument.substr(0, argument.find('=')) : argument;
}

std::string Arguments::Value() {
    const std::string& argument = arguments_[at_];
    if (HasOwnValue()) return argument.substr(argument.find('=') + 1);
    if (next_ >= arguments_.size()) throw WrongUse{argument + " needs a value"};
    return arguments_[next_++];
}

double Arguments::Number(double least, double most) {
    const std::string name = Name();
    return NumberOf(name, Value(), least, most);
}

int Arguments::Whole(int least, int most) {
    const std::string name = Name();
    const std::string text = Value();
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end || value < least || value > most)
        throw WrongUse{name + " takes " + std::to_string(least) + " to " + std::to_string(most) + ", not '" +
                       text + "'"};
    return value;
}

double NumberOf(const std::string& what, const std::string& text, double least, double most) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end || !(value >= least && value <= most))
        throw WrongUse{what + " takes a number from " + GeneralNumber(least) + " to " + GeneralNumber(most) +
                       ", not '" + text + "'"};
    return value;
}

void RefuseOption(const std::string& name) {
    throw WrongUse{"unknown option '" + name + "'; --help lists them"};
}

}  // namespace veltrix
