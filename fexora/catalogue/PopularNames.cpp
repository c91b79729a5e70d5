#include "fexora/catalogue/PopularNames.h"

namespace fexora {
namespace {

constexpr PopularName kPopularNames[] = {
    {"american dollar", WordList("USD")},
    {"american dollars", WordList("USD")},
    {"aussie", WordList("AUD")},
    {"aussie dollar", WordList("AUD")},
    {"aussie dollars", WordList("AUD")},
    {"buck", WordList("USD")},
    {"bucks", WordList("USD")},
    {"cfa", WordList("XOF XAF")},
    {"cfa franc", WordList("XOF XAF")},
    {"cfa francs", WordList("XOF XAF")},
    {"crown", WordList("SEK NOK DKK CZK ISK")},
    {"crowns", WordList("SEK NOK DKK CZK ISK")},
    {"d mark", WordList("DEM")},
    {"deutsche mark", WordList("DEM")},
    {"deutschmark", WordList("DEM")},
    {"dm", WordList("DEM")},
    {"ether", WordList("ETH")},
    {"eu", WordList("EUR")},
    {"europe", WordList("EUR")},
    {"european union", WordList("EUR")},
    {"eurozone", WordList("EUR")},
    {"greenback", WordList("USD")},
    {"greenbacks", WordList("USD")},
    {"kc", WordList("CZK")},
    {"kiwi", WordList("NZD")},
    {"kiwi dollar", WordList("NZD")},
    {"korea", WordList("KRW")},
    {"loonie", WordList("CAD")},
    {"loonies", WordList("CAD")},
    {"nis", WordList("ILS")},
    {"ntd", WordList("TWD")},
    {"pound sterling", WordList("GBP")},
    {"pounds sterling", WordList("GBP")},
    {"quid", WordList("GBP")},
    {"renminbi", WordList("CNY")},
    {"rmb", WordList("CNY")},
    {"rouble", WordList("RUB BYN")},
    {"roubles", WordList("RUB BYN")},
    {"rp", WordList("IDR")},
    {"rs", WordList("INR PKR LKR NPR MUR SCR")},
    {"sdr", WordList("XDR")},
    {"special drawing right", WordList("XDR")},
    {"sterling", WordList("GBP")},
    {"stg", WordList("GBP")},
    {"swissie", WordList("CHF")},
    {"zl", WordList("PLN")},
    {"ウォン", WordList("KRW")},
    {"ドル", WordList("USD")},
    {"ポンド", WordList("GBP")},
    {"人民元", WordList("CNY")},
};

constexpr EverydayName kEverydayNames[] = {
    {"AE", "UAE"},           {"AE", "Emirates"},
    {"CI", "Ivory Coast"},   {"CZ", "Czech Republic"},
    {"EU", "Europe"},        {"EU", "European Union"},
    {"GB", "Britain"},       {"GB", "England"},
    {"GB", "Great Britain"}, {"GB", "UK"},
    {"KR", "South Korea"},   {"MK", "Macedonia"},
    {"MM", "Burma"},         {"NL", "Holland"},
    {"SZ", "Swaziland"},     {"TR", "Turkey"},
    {"US", "America"},       {"US", "US"},
    {"US", "USA"},           {"VN", "Viet Nam"},
};

}  // namespace

std::span<const PopularName> popularNames() noexcept {
  return kPopularNames;
}

std::span<const EverydayName> everydayNames() noexcept {
  return kEverydayNames;
}

}  // namespace fexora
