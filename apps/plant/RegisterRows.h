#pragma once

#include "apps/plant/RegisterMap.h"

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Plant {

// The pieces the rows of the register map are written with; for the files of the map only.

using Rows = std::vector<RegisterEntry>;
using Read = std::function<double(const PlantSite &)>;
using Write = std::function<void(PlantSite &, double)>;

/// A value the operator writes: how to reach it for reading and for writing.
struct Access
{
    Read read;
    Write write;
};

/// @p reach returns a reference to the command in a site, const or not alike.
template <typename Reach> Access command(Reach reach)
{
    return {[reach](const PlantSite &site) { return static_cast<double>(reach(site)); },
            [reach](PlantSite &site, double value) {
                auto &target = reach(site);
                target = static_cast<std::decay_t<decltype(target)>>(value);
            }};
}

RegisterEntry onCoil(std::string name, int address, std::string description, Access access);
RegisterEntry onDiscrete(std::string name, int address, std::string description, Read read);
RegisterEntry onHolding(std::string name, int address, RegisterType type, double scale,
                        std::string unit, double low, double high, std::string description,
                        Access access);
RegisterEntry onInput(std::string name, int address, RegisterType type, double scale,
                      std::string unit, std::string description, Read read);

/// Appends the rows of boiler @p index, counted from 0.
void addBoilerRows(Rows &rows, std::size_t index);
/// Appends the rows of the network, the house and the line.
void addNetworkRows(Rows &rows);

} // namespace Plant
