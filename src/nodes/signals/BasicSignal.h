#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/SignalValue.h"

#include <memory>

namespace Nodes {

class KindBuilder;
class ValueCell;
class WriteTarget;

/// Who keeps a signal's value up to date, and when.
enum class SignalOrigin {
    Polled,  ///< its driver, again and again: silence means that the value grows old
    Changes, ///< its driver, on changes only: the value holds until the next one
    Process  ///< this process, on changes only; no driver gives or loses it
};

/// A tag: one live value with its engineering data. The value itself lives in a shared cell that
/// drivers publish into; the node holds what is configured. Kinds of signals differ in where the
/// value comes from and where a write goes (see DoWrite).
class NODES_EXPORT BasicSignal : public ConfigNode
{
public:
    struct Prop
    {
        static constexpr PropertyId<int> Type{5001, "type"};
        static constexpr PropertyId<std::string> Unit{5002, "unit"};
        static constexpr PropertyId<int> Decimals{5003, "decimals"};
        static constexpr PropertyId<double> Minimum{5004, "minimum"};
        static constexpr PropertyId<double> Maximum{5005, "maximum"};
        static constexpr PropertyId<bool> Writable{5006, "writable"};
        static constexpr PropertyId<int> StaleAfter{5007, "staleAfter"};
        static constexpr PropertyId<double> Deadband{5008, "deadband"};
    };

    BasicSignal();
    ~BasicSignal() override;

    /// Never null; the same cell for the node's whole life.
    const std::shared_ptr<ValueCell> &GetCell() const { return m_cell; }
    /// Copy of the latest value; any thread.
    SignalValue GetValue() const;

    /// The value as the current user may see it: AccessDenied in place of one that a rule forbids
    /// to view. Whatever shows values reads them here. Any thread.
    SignalValue GetShownValue() const;

    enSignalValueType GetValueType() const { return enSignalValueType(m_valueType); }
    const std::string &GetUnit() const { return m_unit; }
    /// Decimals shown, 0 to 9.
    int GetDecimals() const { return m_decimals; }
    /// Range of sensible values in engineering units; bargraphs and trends scale by it.
    double GetMinimum() const { return m_minimum; }
    double GetMaximum() const { return m_maximum; }
    /// Property of the kind.
    virtual SignalOrigin GetOrigin() const { return SignalOrigin::Polled; }
    /// Milliseconds without an update after which a polled value is stale; 0: never. Values that
    /// are published on changes do not grow old.
    int GetStaleAfter() const { return m_staleAfter; }
    /// Change of a number below which what its driver measures is not published as a new value,
    /// engineering units; 0: everything is. Alarms judge what was measured. Read when the driver
    /// starts.
    double GetDeadband() const { return m_deadband; }

    /// Writes a value on behalf of the current user: checks the write right, that the signal may
    /// be written, the type and the limits, then sends it the signal's route (see WriteRoutes).
    /// Journals the write with user, old and new value. Success means that the source, or the way
    /// to it, accepted it: the value shown changes when it is read back. GUI thread.
    [[nodiscard]] Result WriteValue(const SignalValue &value);
    /// Who takes the writes to this signal from now on. Drivers set themselves when they start;
    /// a target that is gone counts as none. GUI thread.
    void SetWriteTarget(std::weak_ptr<WriteTarget> target);

    AuthPrivArray GetAvailablePrivs() const override;
    void Validate(ValidationResults &results) const override;
    /// `value` as this signal's own type; an error value when it does not fit it.
    SignalValue Convert(const SignalValue &value) const;

protected:
    static void Describe(KindBuilder &builder);
    /// Hands the checked value to the source: unless the kind knows better, to the write target;
    /// NotAvailable without one. Called on the GUI thread and must not wait for a device.
    virtual Result DoWrite(const SignalValue &value);
    /// Whether writes that were done are journalled; refusals always are.
    virtual bool IsJournalled() const { return true; }
    void OnLeftTree() const override;
    void OnEnteredTree() const override;

    /// For constructors of kinds whose values are of one type by nature.
    void SetValueType(enSignalValueType type) { m_valueType = int(type); }

    friend class KindBuilder;
    friend class WriteRoutes; // the local route ends in DoWrite

private:
    Result checkWrite(const SignalValue &converted) const;
    void validateDeadband(ValidationResults &results) const;
    void degrade(Quality quality) const;

    std::shared_ptr<ValueCell> m_cell;
    std::weak_ptr<WriteTarget> m_target;
    std::string m_unit;
    int m_valueType = int(enSignalValueType::Double);
    int m_decimals = 1;
    double m_minimum = 0;
    double m_maximum = 100;
    bool m_isWritable = false;
    int m_staleAfter = 0;
    double m_deadband = 0;
};

} // namespace Nodes
