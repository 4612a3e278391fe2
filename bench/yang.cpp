#include "yang.h"

#include <libyang/libyang.h>

#include <cstdio>
#include <cstdlib>

namespace bgp::bench {

namespace {

// Decimal numbers of 8, 16 and 32 bits without leading zeros, and 65536 and above.
#define U8 "(25[0-5]|2[0-4][0-9]|1[0-9]{2}|[1-9]?[0-9])"
#define U16 "(6553[0-5]|655[0-2][0-9]|65[0-4][0-9]{2}|6[0-4][0-9]{3}|[1-5][0-9]{4}|[1-9][0-9]{1,3}|[0-9])"
#define U32                                                                                                            \
    "(429496729[0-5]|42949672[0-8][0-9]|4294967[01][0-9]{2}|429496[0-6][0-9]{3}|42949[0-5][0-9]{4}|"                   \
    "4294[0-8][0-9]{5}|429[0-3][0-9]{6}|42[0-8][0-9]{7}|4[01][0-9]{8}|[1-3][0-9]{9}|[1-9][0-9]{1,8}|[0-9])"
#define IPV4 U8 "(\\." U8 "){3}"
#define ADMINISTERED "0:" U16 ":" U32 "|1:" IPV4 ":" U16 "|2:" U32 ":" U16
#define GROUP "[0-9a-fA-F]{1,4}"
#define IPV6                                                                                                           \
    "(" GROUP ":){7}" GROUP "|((" GROUP ":){1,7}|:):|(" GROUP ":){1,6}:" GROUP "|(" GROUP ":){1,5}(:" GROUP "){2}|"    \
    "(" GROUP ":){1,4}(:" GROUP "){3}|(" GROUP ":){1,3}(:" GROUP "){4}|(" GROUP ":){1,2}(:" GROUP "){5}|" GROUP        \
    ":(:" GROUP "){6}|:(:" GROUP "){1,7}"

// Route distinguishers and targets as RFC 8294 writes them: the type in front, AS numbers plain.
constexpr char kModule[] = "module bgp-bench { yang-version 1.1; namespace \"urn:bgp-bench\"; prefix b;"
                           "leaf route-distinguisher { type string { pattern '" ADMINISTERED "'; } }"
                           "leaf route-target { type string { pattern '" ADMINISTERED "'; } }"
                           "leaf as-number { type uint32; }"
                           "leaf ipv4-address { type string { pattern '" IPV4 "'; } }"
                           "leaf ipv6-address { type string { pattern '" IPV6 "'; } } }";

struct Schema {
    ly_ctx *context;
    const lys_module *module;
};

Schema LoadSchema()
{
    ly_ctx *context = nullptr;
    lys_module *module = nullptr;
    if (ly_ctx_new(nullptr, LY_CTX_NO_YANGLIBRARY, &context) != LY_SUCCESS ||
        lys_parse_mem(context, kModule, LYS_IN_YANG, &module) != LY_SUCCESS) {
        std::fprintf(stderr, "bench: libyang does not take the module\n");
        std::exit(3);
    }
    return {context, module};
}

const Schema &TheSchema()
{
    static const Schema schema = LoadSchema();
    return schema;
}

const lysc_node *leaf;

} // namespace

std::vector<std::string> UseLeaf(const Row &row, Ring &ring)
{
    std::vector<std::string> texts;
    if (row.leaf.name == nullptr) {
        return texts;
    }
    leaf = lys_find_child(nullptr, TheSchema().module, row.leaf.name, 0, LYS_LEAF, 0);
    for (uint32_t i = 0; i < ring.count; ++i) {
        texts.push_back(std::string(row.leaf.prefix) + ring.Text(i));
        if (!ReadByLeaf(texts.back())) {
            std::fprintf(stderr, "bench: leaf %s refuses %s\n", row.leaf.name, texts.back().c_str());
            std::exit(3);
        }
    }
    return texts;
}

bool ReadByLeaf(const std::string &text)
{
    return lyd_value_validate(TheSchema().context, leaf, text.c_str(), text.size(), nullptr, nullptr, nullptr) ==
           LY_SUCCESS;
}

} // namespace bgp::bench
