#pragma once

#include <optional>

namespace fenrik {

class Words;

/// What a statement "modem ..." asks of the modem.
struct ModemOrder {
    enum class Kind {
        Drop,        ///< the carrier drops now
        Silent,      ///< says nothing while `on`
        Garble,      ///< says every byte wrong while `on`
        Late,        ///< answers `seconds` later
        Long,        ///< says 10,000 characters in each line of an answer while `on`
        Echo,        ///< echoes commands while `on`
        DialTone,    ///< none while `on`
        DialTime,    ///< a call is set up in `seconds`
        Note,        ///< the module says "\" and `note` between the network's bytes
        Notes,       ///< the module says a note behind every `count` bytes; 0: none
        HangUpAt,    ///< the carrier drops when `step` comes; never if nothing
        ModuleDeaf,  ///< the module answers nothing while `on`
    };
    enum class Step { Connect, Version, PassThrough };

    Kind kind = Kind::Drop;
    bool on = true;
    double seconds = 0;
    int count = 0;
    char note = 'n';
    std::optional<Step> step;

    /// The words behind "modem". Throws std::invalid_argument with the reason if they are bad.
    [[nodiscard]] static ModemOrder Parse(Words& words);
};

}  // namespace fenrik
