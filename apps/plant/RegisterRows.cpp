#include "apps/plant/RegisterRows.h"

namespace Plant {

RegisterEntry onCoil(std::string name, int address, std::string description, Access access)
{
    return {std::move(name),
            RegisterTable::Coil,
            address,
            RegisterType::Bit,
            1.0,
            "",
            0.0,
            1.0,
            std::move(description),
            std::move(access.read),
            std::move(access.write)};
}

RegisterEntry onDiscrete(std::string name, int address, std::string description, Read read)
{
    return {std::move(name),
            RegisterTable::DiscreteInput,
            address,
            RegisterType::Bit,
            1.0,
            "",
            0.0,
            1.0,
            std::move(description),
            std::move(read),
            {}};
}

RegisterEntry onHolding(std::string name, int address, RegisterType type, double scale,
                        std::string unit, double low, double high, std::string description,
                        Access access)
{
    return {std::move(name),
            RegisterTable::Holding,
            address,
            type,
            scale,
            std::move(unit),
            low,
            high,
            std::move(description),
            std::move(access.read),
            std::move(access.write)};
}

RegisterEntry onInput(std::string name, int address, RegisterType type, double scale,
                      std::string unit, std::string description, Read read)
{
    return {std::move(name),
            RegisterTable::Input,
            address,
            type,
            scale,
            std::move(unit),
            0.0,
            0.0,
            std::move(description),
            std::move(read),
            {}};
}

} // namespace Plant
