#include "model/VariableFlash.h"

namespace fenrik {

std::uint16_t VariableFlash::Word(int address, bool swapped) const
{
    const std::uint16_t word = mReader(address);
    return swapped ? std::uint16_t(word << 8 | word >> 8) : word;
}

std::uint32_t VariableFlash::Long(int address, bool swapped) const
{
    const std::uint32_t upper = Word(address, swapped);
    return upper << 16 | Word(address + 2, swapped);
}

VariableFlash::Entry VariableFlash::ReadEntry(int address, const Form& form) const
{
    const std::uint32_t bits = form.width == 1   ? Byte(address)
                               : form.width == 2 ? Word(address, form.swapped)
                                                 : Long(address, form.swapped);
    const std::uint32_t top = 1u << (8 * form.width - 1);
    return {(bits & top) != 0, (bits & top >> 1) != 0, std::int64_t(bits & ((top >> 1) - 1)) * form.multiplier};
}

int VariableFlash::Walk(const Form& form, std::span<const int> path) const
{
    std::int64_t position = 0;
    for (std::size_t level = 0;; ++level) {
        if (!Fits(position, form))
            return kNotThere;
        const Entry entry = ReadEntry(int(position), form);
        if (entry.size < form.width)
            return kNotThere;
        if (level == path.size())
            return int(position);
        if (!entry.hasSubEntries)
            return kNotThere;
        position += form.width;
        // A sub-entry of size 0 leads to itself again; the index ends that as well.
        for (int left = path[level] + (entry.uncountedFirst ? 1 : 0); left > 0; --left) {
            if (!Fits(position, form))
                return kNotThere;
            position += ReadEntry(int(position), form).size;
        }
    }
}

}  // namespace fenrik
