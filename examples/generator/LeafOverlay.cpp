#include "LeafRows.h"

namespace bfgen {

namespace {

Field const ingressPort{ "ig_md.ingress_port", 9 };
Field const tenant{ "ig_md.tenant", 24 };
Field const remoteLeaf{ "ig_md.remote_leaf", 16 };
Field const vni{ "hdr.tunnel.vni", 24 };
Field const outerSource{ "hdr.ipv4.src_addr", 32 };
Field const outerDestination{ "hdr.ipv4.dst_addr", 32 };
Field const innerMac{ "hdr.inner_ethernet.dst_addr", 48 };
Field const innerSource{ "hdr.inner_ipv4.src_addr", 32 };
Field const innerDestination{ "hdr.inner_ipv4.dst_addr", 32 };
Field const innerProtocol{ "hdr.inner_ipv4.protocol", 8 };
Field const innerIpv6Destination{ "hdr.inner_ipv6.dst_addr", 128 };
Field const entropyPort{ "hdr.l4.src_port", 16 };

std::vector<MatchRow> matches() {
    using enum MatchKind;
    std::vector<Field> const bridged{ tenant, innerMac };
    std::vector<Field> const ipv4Routed{ tenant, innerDestination };
    std::vector<Field> const ipv6Routed{ tenant, innerIpv6Destination };
    std::vector<Field> const flow{ tenant, innerSource, innerDestination, innerProtocol };
    std::vector<std::string_view> const deliver{ "set_remote_leaf", "set_local_port", "flood" };
    std::vector<std::string_view> const toLeaf{ "set_remote_leaf", "drop_packet" };
    std::vector<std::string_view> const filter{ "permit", "deny", "police" };
    std::vector<std::string_view> const mapTenant{ "set_tenant", "drop_packet" };
    IdleTime const coarse{ 1 };
    IdleTime const fine{ 3 };
    IdleTime const besideUnits{ 2, true };
    return {
        { true, "tunnel.termination", exact, 4096, { 0, 1 }, { outerDestination, vni }, { "terminate" } },
        { true, "tunnel.vni_map", exact, 8192, { 1, 1 }, { vni }, mapTenant },
        { true, "tunnel.known_leaf", exact, 2048, { 1, 1 }, { outerSource }, { "accept", "learn" }, fine },
        { true, "overlay.mac", exact, 65536, { 2, 3 }, bridged, deliver, fine },
        { true, "overlay.ipv4_host", exact, 65536, { 3, 3 }, ipv4Routed, deliver, fine },
        { true, "overlay.ipv4_lpm", chainedLpm, 98304, { 5, 2 }, ipv4Routed, toLeaf, besideUnits },
        { true, "overlay.ipv6_lpm", algorithmicTcam, 32768, { 6, 2 }, ipv6Routed, toLeaf, coarse },
        { true, "security.tenant_acl", ternary, 4096, { 8, 2 }, flow, filter, coarse },
        { true, "tunnel.remote_leaf", exact, 1024, { 9, 1 }, { remoteLeaf }, { "set_path" } },
        { true, "tenant.activity", exact, 4096, { 10, 1 }, { tenant }, { "touch" } },
        { true, "tenant.accounting", exact, 4096, { 10, 1 }, { tenant }, { "count_tenant" } },
        { false, "tunnel.entropy", hashAction, 65536, { 0, 1 }, {}, { "set_entropy" } },
        { false, "tunnel.encapsulation", exact, 2048, { 1, 1 }, { remoteLeaf }, { "encapsulate" } },
        { false, "tunnel.outer_dscp", ternary, 128, { 2, 1 }, { tenant }, { "set_dscp" }, {}, 0 },
        { false, "tenant.shaping", exact, 4096, { 3, 1 }, { tenant }, { "shape" } },
    };
}

std::vector<AttendantRow> attendants() {
    using enum How;
    return {
        { true, "tunnel.is_terminated", Condition{ "ig_md.terminate == 1" }, direct, 0, { 1, 1 } },
        { true, "tunnel.paths", ActionData{}, indirect, 4096, { 10, 1 } },
        { true, "tunnel.path_selector", Selection{ 512 }, indirect, 32768, { 10, 1 } },
        { true, "security.tenant_hits", Statistics{ "packets" }, direct, 4096, { 9, 1 } },
        { true, "security.tenant_policers", Meter{ "standard", "bytes", {} }, indirect, 2048, { 9, 2 } },
        { true, "tenant.last_seen", Stateful{ 32, true }, direct, 4096, { 11, 1 } },
        { true, "tenant.received", Statistics{ "packets_and_bytes" }, indirect, 4096, { 11, 1 } },
        { true, "tunnel.leaf_received", Statistics{ "bytes" }, direct, 2048, { 2, 1 } },
        { false, "tunnel.encapsulation_data", ActionData{}, direct, 2048, { 1, 1 } },
        { false, "tenant.shapers", Meter{ "lpf", "bytes", {} }, indirect, 4096, { 4, 1 } },
        { false, "tenant.wred", Meter{ "red", "packets", {} }, direct, 4096, { 4, 1 } },
        { false, "tenant.sent", Statistics{ "packets_and_bytes" }, indirect, 4096, { 4, 1 } },
        { false, "tunnel.sequence", Stateful{ 16, {} }, indirect, 2048, { 2, 1 } },
    };
}

std::vector<UseRow> uses() {
    return {
        { "tunnel.remote_leaf", "tunnel.paths" },
        { "tunnel.remote_leaf", "tunnel.path_selector" },
        { "security.tenant_acl", "security.tenant_hits" },
        { "security.tenant_acl", "security.tenant_policers", "police" },
        { "tenant.activity", "tenant.last_seen" },
        { "tenant.accounting", "tenant.received", "count_tenant" },
        { "tunnel.known_leaf", "tunnel.leaf_received" },
        { "tunnel.encapsulation", "tunnel.encapsulation_data" },
        { "tunnel.encapsulation", "tunnel.sequence", "encapsulate" },
        { "tenant.shaping", "tenant.shapers", "shape" },
        { "tenant.shaping", "tenant.wred" },
        { "tenant.shaping", "tenant.sent", "shape" },
    };
}

std::vector<PhvRecord> phvRecords() {
    return {
        { "hdr.ipv4.src_addr", 4, false, true, 0, 0, 2 },
        { "hdr.ipv4.dst_addr", 4, false, true, 1, 0, 1 },
        { "hdr.tunnel.$valid", 1, true, true, 64, 0, 11 },
        { "hdr.tunnel.vni", 3, false, true, 2, 0, 2 },
        { "hdr.inner_ethernet.dst_addr", 6, false, true, 3, 0, 5 },
        { "hdr.inner_ipv4.src_addr", 4, false, true, 5, 0, 9 },
        { "hdr.inner_ipv4.dst_addr", 4, false, true, 6, 0, 9 },
        { "hdr.inner_ipv4.protocol", 1, false, true, 65, 0, 9 },
        { "hdr.inner_ipv6.dst_addr", 16, false, true, 8, 0, 7 },
        { "ig_md.tenant", 3, false, true, 12, 1, 11 },
        { "ig_md.remote_leaf", 2, false, true, 128, 2, 11 },
        { "ig_md.tenant", 3, false, false, 20, 0, 4 },
        { "ig_md.remote_leaf", 2, false, false, 140, 0, 2 },
        { "hdr.l4.src_port", 2, false, false, 141, 0, 11 },
        { "hdr.tunnel.$valid", 1, true, false, 72, 0, 11 },
    };
}

} // namespace

LeafRows overlayRows() {
    return {
        .matches = matches(),
        .attendants = attendants(),
        .uses = uses(),
        .learnQuanta = { { "remote_learn", "counted", { tenant, innerMac, outerSource } } },
        .hashes = { { "path_hash", { innerSource, innerDestination, innerProtocol, entropyPort } },
                    { "entropy_hash", { innerSource, innerDestination, ingressPort } } },
        .headers = { { "hdr.fabric", { { "kind", 3 }, { "color", 2 }, { "queue", 5 }, { "ports", 22 } } },
                     { "ig_md.tunnel_bridge", { { "tenant", 24 }, { "remote_leaf", 16 } } } },
        .phvRecords = phvRecords(),
    };
}

} // namespace bfgen
