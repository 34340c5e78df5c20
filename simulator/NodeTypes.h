#pragma once

#include <string_view>

namespace fenrik {

/// What a node of a model has, by the type number that it reports.
struct NodeType {
    int number;
    std::string_view name;
    int inputs;
    int outputs;
    int bitsPerInput;  ///< width of one input in an input word: 0, 1 or 2
};

/// The model of type `number`, or null if there is none.
[[nodiscard]] const NodeType* FindNodeType(int number);

}  // namespace fenrik
