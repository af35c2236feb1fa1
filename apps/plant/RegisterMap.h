#pragma once

#include "apps/plant/BoilerHouse.h"
#include "apps/plant/LineFault.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Plant {

/// Everything the registers reach: the process and the state of its line.
struct PlantSite
{
    BoilerHouse house;
    LineFault line;
};

enum class RegisterTable { Coil, DiscreteInput, Holding, Input };

/// How a value lies in its registers. Abcd: the high word comes first; Cdab: the low word first.
enum class RegisterType { Bit, Int16, UInt16, UInt32Abcd, UInt32Cdab, Float32Abcd, Float32Cdab };

/// One row of the map. Engineering value = raw value * scale.
struct RegisterEntry
{
    std::string name;
    RegisterTable table;
    int address; ///< zero-based, as it goes over the wire
    RegisterType type;
    double scale;
    std::string unit;
    double low; ///< accepted range of a write, in engineering units
    double high;
    std::string description;
    std::function<double(const PlantSite &)> read;
    std::function<void(PlantSite &, double)> write; ///< empty for read-only tables

    /// Number of registers (or bits) the value takes.
    int width() const;
};

/// The map of the plant; the tables are free of gaps and start at address 0.
const std::vector<RegisterEntry> &registerMap();
/// The row called @p name, or null.
const RegisterEntry *findRegister(const std::string &name);
/// Number of registers (or bits) in @p table.
int tableSize(RegisterTable table);

/// Writes @p value, in engineering units, to @p words (entry.width() of them, not a Bit).
/// A value beyond the type's range saturates.
void encode(const RegisterEntry &entry, double value, std::uint16_t *words);
/// The engineering value in @p words; may be non-finite for float32.
double decode(const RegisterEntry &entry, const std::uint16_t *words);

} // namespace Plant
