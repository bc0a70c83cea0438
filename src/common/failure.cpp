#include "common/failure.h"

#include <utility>

namespace veltrix {

Failure::Failure(int number, std::string description, std::string source, CodeLine where)
    : number_(number), description_(std::move(description)), source_(std::move(source)), line_(where) {}

}  // namespace veltrix
