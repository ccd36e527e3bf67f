#include "Names.h"

#include <algorithm>
#include <array>
#include <vector>

namespace bfgen {

namespace {

using Words = std::span<std::string_view const>;

constexpr std::array<std::string_view, 12> exactTables{
    "l2.station_move", "l2.destination_mac", "l2.vlan_member", "l3.ipv4_host",
    "l3.ipv6_host",    "l3.next_hop",        "tunnel.vni_map", "tunnel.termination",
    "nat.source",      "nat.destination",    "telemetry.flow", "mpls.label" };

constexpr std::array<std::string_view, 9> ternaryTables{
    "acl.ipv4_acl", "acl.ipv6_acl",       "acl.mac_acl",  "acl.control_plane",   "qos.classify",
    "qos.dscp_map", "port.storm_control", "acl.redirect", "telemetry.watch_list" };

constexpr std::array<std::string_view, 5> algorithmicTables{ "acl.large_ipv4_acl", "acl.large_ipv6_acl",
                                                             "security.tenant_acl", "qos.subscriber",
                                                             "security.firewall" };

constexpr std::array<std::string_view, 4> lpmTables{ "l3.ipv4_lpm", "l3.ipv6_lpm", "vrf.ipv4_routes",
                                                     "vrf.ipv6_routes" };

constexpr std::array<std::string_view, 4> keylessTables{ "l3.rewrite", "mirror.session_default",
                                                         "qos.queue_default", "tunnel.strip" };

constexpr std::array<std::string_view, 3> hashTables{ "l3.ecmp_hash", "lag.member_hash",
                                                      "tunnel.entropy_hash" };

constexpr std::array<std::string_view, 1> portTables{ "port.properties" };

constexpr std::array<std::string_view, 20> actionNames{
    "permit",      "deny",       "set_next_hop", "set_ecmp_group", "send_to_cpu",
    "drop_packet", "flood",      "forward",      "learn_address",  "set_queue",
    "mark_dscp",   "push_vlan",  "pop_vlan",     "encapsulate",    "decapsulate",
    "copy_to_cpu", "set_tenant", "count_only",   "police",         "mirror_packet" };

constexpr std::array<std::string_view, 6> conditionTexts{ "hdr.ipv4.isValid()",
                                                          "hdr.ipv6.isValid() && ig_md.routed == 1",
                                                          "ig_md.drop == 0",
                                                          "ig_md.port_kind != PORT_KIND_FABRIC",
                                                          "hdr.tunnel.isValid() || ig_md.terminate == 1",
                                                          "eg_md.mirror_session > 0" };

Words tableNames( MatchKind kind ) {
    switch( kind ) {
    case MatchKind::exact:
        return exactTables;
    case MatchKind::ternary:
        return ternaryTables;
    case MatchKind::algorithmicTcam:
        return algorithmicTables;
    case MatchKind::chainedLpm:
    case MatchKind::algorithmicLpm:
        return lpmTables;
    case MatchKind::keyless:
        return keylessTables;
    case MatchKind::hashAction:
        return hashTables;
    case MatchKind::portProperties:
        break;
    }
    return portTables;
}

std::span<Field const> knownFields() {
    static std::vector<Field> const fields{ { "hdr.ethernet.src_addr", 48 },
                                            { "hdr.ethernet.dst_addr", 48 },
                                            { "hdr.ethernet.ether_type", 16 },
                                            { "hdr.vlan[0].vid", 12 },
                                            { "hdr.vlan[0].pcp", 3 },
                                            { "hdr.vlan[1].vid", 12 },
                                            { "hdr.ipv4.src_addr", 32 },
                                            { "hdr.ipv4.dst_addr", 32 },
                                            { "hdr.ipv4.protocol", 8 },
                                            { "hdr.ipv4.dscp", 6 },
                                            { "hdr.ipv4.ttl", 8 },
                                            { "hdr.ipv4.length", 16 },
                                            { "hdr.ipv6.src_addr", 128 },
                                            { "hdr.ipv6.dst_addr", 128 },
                                            { "hdr.ipv6.next_header", 8 },
                                            { "hdr.ipv6.traffic_class", 8 },
                                            { "hdr.ipv6.flow_label", 20 },
                                            { "hdr.l4.src_port", 16 },
                                            { "hdr.l4.dst_port", 16 },
                                            { "hdr.tcp.flags", 8 },
                                            { "hdr.tunnel.vni", 24 },
                                            { "hdr.inner_ipv4.src_addr", 32 },
                                            { "hdr.inner_ipv4.dst_addr", 32 },
                                            { "hdr.mpls[0].label", 20 },
                                            { "ig_md.ingress_port", 9 },
                                            { "ig_md.bridge_domain", 16 },
                                            { "ig_md.vrf", 14 },
                                            { "ig_md.next_hop", 16 },
                                            { "ig_md.l4_range$0", 8 },
                                            { "ig_md.acl_label$1", 16 },
                                            { "ig_md.tenant", 24 },
                                            { "eg_md.egress_port", 9 },
                                            { "eg_md.queue", 5 },
                                            { "eg_md.mirror_session", 10 },
                                            { "eg_md.packet_color", 2 },
                                            { "eg_md.rewrite_index", 16 } };
    return fields;
}

std::span<Header const> knownHeaders() {
    static std::vector<Header> const headers{
        { "hdr.fabric",
          { { "kind", 3 }, { "color", 2 }, { "queue", 5 }, { "devices", 6 }, { "ports", 16 } } },
        { "hdr.cpu", { { "tx_bypass", 1 }, { "pad", 7 }, { "reason", 16 }, { "ingress_port", 16 } } },
        { "ig_md.bridged",
          { { "source_port", 9 }, { "pad", 7 }, { "bridge_domain", 16 }, { "next_hop", 16 } } },
        { "ig_md.mirrored", { { "source", 8 }, { "session", 10 }, { "pad", 6 }, { "time", 48 } } },
        { "eg_md.mirrored", { { "source", 8 }, { "queue_depth", 24 }, { "time", 48 } } },
        { "hdr.telemetry_report", { { "version", 4 }, { "length", 4 }, { "sequence", 22 }, { "flags", 2 } } },
        { "hdr.telemetry_shim", { { "kind", 8 }, { "hops", 8 }, { "remaining", 16 } } },
        { "ig_md.learn", { { "address", 48 }, { "bridge_domain", 16 }, { "port", 16 } } },
        { "ig_md.resubmitted", { { "reason", 8 }, { "data", 56 } } },
        { "hdr.timestamp", { { "value", 48 } } },
        { "hdr.pad", {} },
        { "hdr.probe", { { "identity", 12 }, { "hop", 4 }, { "payload", 1024 } } } };
    return headers;
}

template<typename Item>
std::vector<Item> pickSome( Random& random, std::span<Item const> known, uint32_t count ) {
    std::vector<Item> items( known.begin(), known.end() );
    random.shuffle( items );
    items.resize( std::min<std::size_t>( count, items.size() ) );
    return items;
}

} // namespace

std::string_view inventTableName( Random& random, MatchKind kind ) {
    return random.pick( tableNames( kind ) );
}

std::vector<std::string_view> inventActionNames( Random& random, uint32_t count ) {
    return pickSome( random, Words( actionNames ), count );
}

std::string_view inventConditionText( Random& random ) { return random.pick( Words( conditionTexts ) ); }

std::vector<Field> inventFields( Random& random, uint32_t count ) {
    return pickSome( random, knownFields(), count );
}

std::vector<Header> inventFlexibleHeaders( Random& random, uint32_t count ) {
    return pickSome( random, knownHeaders(), count );
}

} // namespace bfgen
