#pragma once

// What every contender has to produce: the content of the library's model in plain collections.

#include "resourceinfo/model/Records.h"

#include <cstdint>
#include <map>
#include <unordered_map>

namespace BfResourceInfo {
class BfResourceInfoIntf;
}

/// A placed table, and the handles that it references.
struct Placed {
    String name;
    U32 size = 0;
    U8 stageStart = 0;
    std::vector<U32> counters;
    std::vector<U32> meters;
    std::vector<U32> registers;
};

struct Model {
    std::vector<BfResource> resources;
    std::vector<BfTableInfo> tables;
    std::vector<BfTableCounterInfo> counters;
    std::vector<BfTableMeterInfo> meters;
    std::vector<BfTableWredInfo> wreds;
    std::vector<BfRegisterInfo> registers;
    std::vector<BfLearnQuantaInfo> learnQuantas;
    std::vector<BfActionInfo> actions;
    std::unordered_map<String, U16> headers; // bytes
    std::unordered_map<String, BfDynamicHashInfo> hashes;
    std::map<String, U8, std::less<>> ingressPhv; // bytes
    std::map<String, U8, std::less<>> egressPhv;  // bytes
    std::unordered_map<U32, Placed> placed;       // by handle
    std::unordered_map<String, String> parents;   // of what the actions of one table alone name
};

/// A copy of what the library loaded.
Model contentOf( BfResourceInfo::BfResourceInfoIntf const& interface );

/// Named numbers that tell two models apart: how many there are of each kind, some sums, and a digest of
/// every field of every record.
using Answer = std::vector<std::pair<char const*, std::uint64_t>>;
Answer answerOf( Model const& model );
