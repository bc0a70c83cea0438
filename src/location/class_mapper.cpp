#include "location/class_mapper.h"

#include "common/failure.h"

namespace veltrix {

Mappers::Mappers(const MapperServices& services) {
    for (int row = 0; row <= C_NUMBEROFMAPPERS; ++row) all_.emplace_back(services);
}

ClassMapper& Mappers::operator[](std::int32_t row) {
    if (row < 0 || row > C_NUMBEROFMAPPERS)
        throw Failure(errors::OutOfRange, "Subscript out of range", "Mappers");
    return all_[static_cast<std::size_t>(row)];
}

}  // namespace veltrix
