#include "LeafRows.h"

#include <algorithm>
#include <iterator>

namespace bfgen {

namespace {

Field const ingressPort{ "ig_md.ingress_port", 9 };
Field const bridgeDomain{ "ig_md.bridge_domain", 16 };
Field const vrf{ "ig_md.vrf", 14 };
Field const nextHop{ "ig_md.next_hop", 16 };
Field const sourceMac{ "hdr.ethernet.src_addr", 48 };
Field const destinationMac{ "hdr.ethernet.dst_addr", 48 };
Field const ipv4Source{ "hdr.ipv4.src_addr", 32 };
Field const ipv4Destination{ "hdr.ipv4.dst_addr", 32 };
Field const ipv4Protocol{ "hdr.ipv4.protocol", 8 };
Field const ipv6Source{ "hdr.ipv6.src_addr", 128 };
Field const ipv6Destination{ "hdr.ipv6.dst_addr", 128 };
Field const sourcePort{ "hdr.l4.src_port", 16 };
Field const destinationPort{ "hdr.l4.dst_port", 16 };
Field const dscp{ "hdr.ipv4.dscp", 6 };
Field const egressPort{ "eg_md.egress_port", 9 };
Field const queue{ "eg_md.queue", 5 };

std::vector<MatchRow> ingressMatches() {
    using enum MatchKind;
    std::vector<Field> const ipv4Route{ vrf, ipv4Destination };
    std::vector<Field> const ipv6Route{ vrf, ipv6Destination };
    std::vector<Field> const ipv4Flow{ ipv4Source, ipv4Destination, ipv4Protocol, sourcePort,
                                       destinationPort };
    std::vector<Field> const ipv6Flow{ ipv6Source, ipv6Destination, sourcePort, destinationPort };
    std::vector<std::string_view> const toHost{ "set_next_hop", "set_ecmp_group", "send_to_cpu" };
    std::vector<std::string_view> const toNetwork{ "set_next_hop", "set_ecmp_group", "drop_packet" };
    std::vector<std::string_view> const filter{ "permit", "deny", "police", "mirror_packet" };
    std::vector<std::string_view> const trap{ "copy_to_cpu", "send_to_cpu", "drop_packet" };
    std::vector<std::string_view> const stationCheck{ "known", "learn" };
    IdleTime const coarse{ 1 };
    IdleTime const fine{ 3 };
    return {
        { true, "port.properties", portProperties, 288, { 0, 1 }, { ingressPort }, {} },
        { true, "port.ingress_statistics", keyless, 1, { 1, 1 }, {}, { "count_port" } },
        { true, "l2.station_move", exact, 16384, { 1, 2 }, { bridgeDomain, sourceMac }, stationCheck },
        { true, "l2.forward", exact, 16384, { 2, 2 }, { bridgeDomain, destinationMac }, { "forward" }, fine },
        { true, "l3.router_mac", ternary, 64, { 2, 1 }, { ingressPort, destinationMac }, { "route" } },
        { true, "l3.ipv4_host", exact, 32768, { 3, 3 }, ipv4Route, toHost, fine },
        { true, "l3.ipv4_lpm", algorithmicTcam, 131072, { 4, 2 }, ipv4Route, toNetwork },
        { true, "l3.ipv6_host", exact, 16384, { 3, 2 }, ipv6Route, toHost, fine },
        { true, "l3.ipv6_lpm", chainedLpm, 49152, { 5, 2 }, ipv6Route, toNetwork },
        { true, "acl.ipv4_acl", ternary, 2048, { 6, 2 }, ipv4Flow, filter, coarse },
        { true, "acl.ipv6_acl", ternary, 1024, { 6, 2 }, ipv6Flow, filter, coarse },
        { true, "acl.control_plane", ternary, 256, { 8, 1 }, { ipv4Protocol, destinationPort }, trap },
        { true, "l3.next_hop", exact, 4096, { 8, 1 }, { nextHop }, { "set_neighbour", "glean" } },
        { true, "l3.ecmp_group", exact, 1024, { 8, 1 }, { nextHop }, { "set_member" } },
        { true, "lag.group", exact, 256, { 10, 1 }, { egressPort }, { "set_port" } },
    };
}

std::vector<MatchRow> egressMatches() {
    using enum MatchKind;
    return {
        { false, "l3.rewrite", exact, 4096, { 1, 1 }, { nextHop }, { "rewrite_macs" } },
        { false, "qos.dscp_remark", exact, 64, { 2, 1 }, { dscp }, { "mark_dscp" }, {}, 8 },
        { false, "qos.queue_drop", exact, 512, { 3, 1 }, { egressPort, queue }, { "apply_wred" } },
        { false, "port.egress_statistics", keyless, 1, { 10, 1 }, {}, { "count_port" } },
    };
}

std::vector<MatchRow> matches() {
    std::vector<MatchRow> rows = ingressMatches();
    std::ranges::copy( egressMatches(), std::back_inserter( rows ) );
    return rows;
}

std::vector<AttendantRow> attendants() {
    using enum How;
    return {
        { true, "port.ingress_counters", Statistics{ "packets_and_bytes" }, indirect, 512, { 1, 1 } },
        { true, "l3.next_hop_data", ActionData{}, direct, 4096, { 8, 1 } },
        { true, "l3.ecmp_members", ActionData{}, indirect, 8192, { 9, 1 } },
        { true, "l3.ecmp_selector", Selection{ 1024 }, indirect, 65536, { 9, 1 } },
        { true, "lag.members", ActionData{}, indirect, 1024, { 11, 1 } },
        { true, "lag.selector", Selection{ 256 }, indirect, 16384, { 11, 1 } },
        { true, "acl.ipv4_hits", Statistics{ "packets_and_bytes" }, direct, 2048, { 7, 1 } },
        { true, "acl.ipv6_hits", Statistics{ "packets" }, direct, 1024, { 7, 1 } },
        { true, "acl.policers", Meter{ "standard", "bytes", "hdr.color" }, indirect, 1024, { 7, 2 } },
        { true, "acl.control_plane_policer", Meter{ "standard", "packets", {} }, direct, 256, { 9, 1 } },
        { true, "acl.control_plane_bytes", Statistics{ "bytes" }, direct, 256, { 9, 1 } },
        { true, "l2.station_seen", Stateful{ 1, {} }, direct, 16384, { 2, 1 } },
        { false, "qos.queue_wred", Meter{ "red", "bytes", {} }, indirect, 512, { 4, 1 } },
        { false, "qos.queue_drops", Statistics{ "packets" }, direct, 512, { 4, 1 } },
        { false, "qos.queue_depth", Stateful{ 32, false }, indirect, 512, { 4, 1 } },
        { false, "port.egress_counters", Statistics{ "packets_and_bytes" }, indirect, 512, { 10, 1 } },
    };
}

std::vector<UseRow> uses() {
    return {
        { "port.ingress_statistics", "port.ingress_counters", "count_port" },
        { "l3.next_hop", "l3.next_hop_data" },
        { "l3.ecmp_group", "l3.ecmp_members" },
        { "l3.ecmp_group", "l3.ecmp_selector" },
        { "lag.group", "lag.members" },
        { "lag.group", "lag.selector" },
        { "acl.ipv4_acl", "acl.ipv4_hits" },
        { "acl.ipv4_acl", "acl.policers", "police" },
        { "acl.ipv6_acl", "acl.ipv6_hits" },
        { "acl.ipv6_acl", "acl.policers", "police" },
        { "acl.control_plane", "acl.control_plane_policer" },
        { "acl.control_plane", "acl.control_plane_bytes" },
        { "l2.station_move", "l2.station_seen" },
        { "qos.queue_drop", "qos.queue_wred", "apply_wred" },
        { "qos.queue_drop", "qos.queue_drops" },
        { "qos.queue_drop", "qos.queue_depth", "apply_wred" },
        { "port.egress_statistics", "port.egress_counters", "count_port" },
    };
}

std::vector<PhvRecord> phvRecords() {
    return {
        { "hdr.ethernet.dst_addr", 6, false, true, 0, 0, 11 },
        { "hdr.ethernet.src_addr", 6, false, true, 2, 0, 2 },
        { "hdr.ethernet.ether_type", 2, false, true, 128, 0, 11 },
        { "hdr.vlan[0].vid", 2, false, true, 129, 0, 4 },
        { "hdr.ipv4.$valid", 1, true, true, 64, 0, 11 },
        { "hdr.ipv4.src_addr", 4, false, true, 4, 0, 9 },
        { "hdr.ipv4.dst_addr", 4, false, true, 5, 0, 9 },
        { "hdr.ipv4.protocol", 1, false, true, 65, 0, 8 },
        { "hdr.ipv6.$valid", 1, true, true, 64, 0, 11 },
        { "hdr.ipv6.src_addr", 16, false, true, 6, 0, 9 },
        { "hdr.ipv6.dst_addr", 16, false, true, 10, 0, 9 },
        { "hdr.l4.src_port", 2, false, true, 130, 0, 9 },
        { "hdr.l4.dst_port", 2, false, true, 131, 0, 9 },
        { "ig_md.ingress_port", 2, false, true, 132, 0, 8 },
        { "ig_md.vrf", 2, false, true, 133, 1, 6 },
        { "ig_md.next_hop", 2, false, true, 134, 3, 11 },
        { "hdr.ethernet.dst_addr", 6, false, false, 20, 0, 11 },
        { "hdr.ethernet.src_addr", 6, false, false, 22, 0, 11 },
        { "hdr.ipv4.$valid", 1, true, false, 72, 0, 11 },
        { "hdr.ipv4.dscp", 1, false, false, 73, 0, 11 },
        { "eg_md.egress_port", 2, false, false, 140, 0, 10 },
        { "eg_md.queue", 1, false, false, 74, 0, 4 },
    };
}

} // namespace

LeafRows routingRows() {
    return {
        .matches = matches(),
        .attendants = attendants(),
        .uses = uses(),
        .learnQuanta = { { "mac_learn", "timed", { bridgeDomain, sourceMac, ingressPort } },
                         { "port_event", std::nullopt, { ingressPort } } },
        .hashes = { { "ecmp_hash",
                      { ipv4Source, ipv4Destination, ipv4Protocol, sourcePort, destinationPort } },
                    { "lag_hash", { sourceMac, destinationMac } } },
        .headers = { { "hdr.fabric", { { "kind", 3 }, { "color", 2 }, { "queue", 5 }, { "ports", 22 } } },
                     { "hdr.cpu", { { "reason", 16 }, { "ingress_port", 9 }, { "pad", 7 } } },
                     { "ig_md.learn", { { "address", 48 }, { "bridge_domain", 16 }, { "port", 16 } } } },
        .phvRecords = phvRecords(),
    };
}

} // namespace bfgen
