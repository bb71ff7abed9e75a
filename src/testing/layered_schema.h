#pragma once

#include <string>

#include "testing/schema_rows.h"

namespace norvelis {

/// A schema that unfolds to many nodes: layers of two hundred records below the entry records, each record
/// owning three of the next layer. With 305 entries and seven layers the tree has a million nodes.
inline void WriteLayers(Connection& store, int entries, int layers) {
    constexpr int kWidth = 200;
    SchemaRows rows(store, "LAYERS");
    const auto name = [](int layer, int i) {
        return "REC-" + std::to_string(layer) + "-" + std::to_string(i % kWidth);
    };
    const auto members = [&](int layer, int i) {
        return name(layer, i) + "," + name(layer, i * 7 + 1) + "," + name(layer, i * 3 + 2);
    };
    for (int i = 0; i < entries; ++i) rows.Entry("ENTRY-" + std::to_string(i), members(0, i));
    for (int layer = 0; layer < layers; ++layer) {
        for (int i = 0; i < kWidth; ++i) {
            rows.Record(name(layer, i), layer + 1 < layers ? members(layer + 1, i) : "");
        }
    }
}

}  // namespace norvelis
