#pragma once

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/HistorySource.h"

#include <vector>

/// A history of samples that a test knows.
class KnownHistory : public Nodes::HistorySource
{
public:
    struct Sample
    {
        Nodes::Timestamp time;
        double number;
        Nodes::Quality quality = Nodes::Quality::Good;
    };

    explicit KnownHistory(std::vector<Sample> known) : samples(std::move(known)) {}

    Nodes::Result Read(Nodes::HistoryColumnBuilder &into,
                       const std::atomic<bool> &isCancelled) const override
    {
        for (const Sample &sample : samples) {
            if (isCancelled)
                return Nodes::Result(Nodes::Result::Cancelled);
            into.Add(sample.time, sample.number, sample.quality);
        }
        return result;
    }

    const std::vector<Sample> samples;
    Nodes::Result result;
};
