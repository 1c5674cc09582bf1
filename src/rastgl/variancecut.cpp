#include "rastgl/variancecut.h"

#include <algorithm>
#include <numeric>

namespace rastgl
{

namespace
{

// Weight and weighted sum of some colours.
struct Moments {
    float weight = 0;
    Position sum = {};

    void Add(const WeightedPosition &colour)
    {
        weight += colour.weight;
        for (std::size_t i = 0; i < 4; ++i)
            sum[i] += colour.weight * colour.at[i];
    }

    void Add(const Moments &other)
    {
        weight += other.weight;
        for (std::size_t i = 0; i < 4; ++i)
            sum[i] += other.sum[i];
    }

    Moments Without(const Moments &part) const
    {
        Moments rest = *this;
        rest.weight -= part.weight;
        for (std::size_t i = 0; i < 4; ++i)
            rest.sum[i] -= part.sum[i];
        return rest;
    }

    // How much smaller the squared distances to the mean are than those to the origin.
    float MeanGain() const
    {
        if (weight <= 0)
            return 0;
        float squares = 0;
        for (const float channel : sum)
            squares += channel * channel;
        return squares / weight;
    }
};

// A range of the index list, and its best division: colours with at[axis] < threshold go to the lower part.
struct Group {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t axis = 0;
    float threshold = 0;
    float gain = 0; // 0: there is nothing to divide
};

class Cutter
{
public:
    explicit Cutter(std::span<const WeightedPosition> colours) : m_colours(colours), m_order(colours.size())
    {
        std::iota(m_order.begin(), m_order.end(), 0U);
    }

    Groups Cut(std::size_t limit);

private:
    Group Plan(std::size_t begin, std::size_t end) const;
    void PlanAlong(std::size_t axis, const Position &mean, Group &group) const;
    template <typename Test>
    std::size_t Divide(const Group &group, Test &&belongsLower)
    {
        const auto first = m_order.begin();
        const auto middle =
            std::stable_partition(first + std::ptrdiff_t(group.begin), first + std::ptrdiff_t(group.end),
                                  [&](unsigned index) { return belongsLower(m_colours[index]); });
        return std::size_t(middle - first);
    }

    std::span<const WeightedPosition> m_colours;
    std::vector<unsigned> m_order;
};

Group Cutter::Plan(std::size_t begin, std::size_t end) const
{
    Group group{.begin = begin, .end = end};
    Moments all;
    for (std::size_t i = begin; i < end; ++i)
        all.Add(m_colours[m_order[i]]);
    Position mean = {};
    for (std::size_t i = 0; i < 4; ++i)
        mean[i] = all.weight > 0 ? all.sum[i] / all.weight : 0;
    for (std::size_t axis = 0; axis < 4; ++axis)
        PlanAlong(axis, mean, group);
    return group;
}

void Cutter::PlanAlong(std::size_t axis, const Position &mean, Group &group) const
{
    std::array<Moments, 256> slices;
    std::size_t lowest = 255;
    std::size_t highest = 0;
    for (std::size_t i = group.begin; i < group.end; ++i) {
        const auto slice = std::size_t(m_colours[m_order[i]].at[axis]);
        lowest = std::min(lowest, slice);
        highest = std::max(highest, slice);
    }
    if (lowest >= highest)
        return;
    std::fill(slices.begin() + std::ptrdiff_t(lowest), slices.begin() + std::ptrdiff_t(highest) + 1,
              Moments{});
    Moments all;
    for (std::size_t i = group.begin; i < group.end; ++i) {
        WeightedPosition colour = m_colours[m_order[i]];
        const auto slice = std::size_t(colour.at[axis]);
        for (std::size_t channel = 0; channel < 4; ++channel)
            colour.at[channel] -= mean[channel];
        slices[slice].Add(colour);
        all.Add(colour);
    }
    Moments lower;
    for (std::size_t slice = lowest; slice < highest; ++slice) {
        lower.Add(slices[slice]);
        const float gain = lower.MeanGain() + all.Without(lower).MeanGain();
        if (gain > group.gain) {
            group.gain = gain;
            group.axis = axis;
            group.threshold = float(slice + 1);
        }
    }
}

Groups Cutter::Cut(std::size_t limit)
{
    std::vector<Group> groups;
    const Group all{.begin = 0, .end = m_order.size()};
    const std::size_t opaqueEnd = Divide(all, [](const WeightedPosition &colour) { return colour.opaque; });
    if (opaqueEnd > 0)
        groups.push_back(Plan(0, opaqueEnd));
    if (opaqueEnd < m_order.size())
        groups.push_back(Plan(opaqueEnd, m_order.size()));

    while (groups.size() < limit) {
        const auto widest = std::ranges::max_element(groups, {}, &Group::gain);
        if (widest == groups.end() || widest->gain <= 0)
            break;
        const Group group = *widest;
        const std::size_t middle = Divide(
            group, [&](const WeightedPosition &colour) { return colour.at[group.axis] < group.threshold; });
        *widest = Plan(group.begin, middle);
        groups.push_back(Plan(middle, group.end));
    }

    Groups result{.ofColour = std::vector<std::uint8_t>(m_colours.size()), .count = groups.size()};
    for (std::size_t number = 0; number < groups.size(); ++number) {
        for (std::size_t i = groups[number].begin; i < groups[number].end; ++i)
            result.ofColour[m_order[i]] = std::uint8_t(number);
    }
    return result;
}

} // namespace

Groups CutByVariance(std::span<const WeightedPosition> colours, std::size_t limit)
{
    return Cutter(colours).Cut(limit);
}

} // namespace rastgl
