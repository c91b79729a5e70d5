// Made by tools/make-catalogue from currencies.tsv; change the table and run it.
#include "fexora/resources/EmbeddedCatalogue.h"

namespace fexora {
namespace {

// clang-format off
constexpr TableCode kCodes[] = {
    "USD", "EUR", "JPY", "GBP", "CNY", "AUD", "CAD", "CHF", "HKD", "SGD",
    "AED", "AFN", "ALL", "AMD", "AOA", "ARS", "AWG", "AZN", "BAM", "BBD",
    "BDT", "BHD", "BIF", "BMD", "BND", "BOB", "BOV", "BRL", "BSD", "BTN",
    "BWP", "BYN", "BZD", "CDF", "CHE", "CHW", "CLF", "CLP", "COP", "COU",
    "CRC", "CUP", "CVE", "CZK", "DJF", "DKK", "DOP", "DZD", "EGP", "ERN",
    "ETB", "FJD", "FKP", "GEL", "GHS", "GIP", "GMD", "GNF", "GTQ", "GYD",
    "HNL", "HTG", "HUF", "IDR", "ILS", "INR", "IQD", "IRR", "ISK", "JMD",
    "JOD", "KES", "KGS", "KHR", "KMF", "KPW", "KRW", "KWD", "KYD", "KZT",
    "LAK", "LBP", "LKR", "LRD", "LSL", "LYD", "MAD", "MDL", "MGA", "MKD",
    "MMK", "MNT", "MOP", "MRU", "MUR", "MVR", "MWK", "MXN", "MXV", "MYR",
    "MZN", "NAD", "NGN", "NIO", "NOK", "NPR", "NZD", "OMR", "PAB", "PEN",
    "PGK", "PHP", "PKR", "PLN", "PYG", "QAR", "RON", "RSD", "RUB", "RWF",
    "SAR", "SBD", "SCR", "SDG", "SEK", "SHP", "SLE", "SOS", "SRD", "SSP",
    "STN", "SVC", "SYP", "SZL", "THB", "TJS", "TMT", "TND", "TOP", "TRY",
    "TTD", "TWD", "TZS", "UAH", "UGX", "USN", "UYI", "UYU", "UYW", "UZS",
    "VED", "VES", "VND", "VUV", "WST", "XAD", "XAF", "XBA", "XBB", "XBC",
    "XBD", "XCD", "XCG", "XDR", "XOF", "XPF", "XSU", "XUA", "YER", "ZAR",
    "ZMW", "ZWG", "CNH", "GGP", "IMP", "JEP", "SPL", "TVD", "XAG", "XAU",
    "XPD", "XPT", "1INCH", "AAVE", "ADA", "AKT", "ALGO", "AMP", "APE", "APT",
    "AR", "ARB", "ATOM", "AVAX", "AXS", "BAKE", "BAT", "BCH", "BNB", "BSV",
    "BSW", "BTC", "BTG", "BTT", "BUSD", "CAKE", "CELO", "CFX", "CHZ", "COMP",
    "CRO", "CRV", "CSPR", "CVX", "DAI", "DASH", "DCR", "DFI", "DOGE", "DOT",
    "DYDX", "EGLD", "ENJ", "EOS", "ETC", "ETH", "EURC", "FEI", "FIL", "FLOW",
    "FLR", "FRAX", "FTT", "GALA", "GMX", "GNO", "GRT", "GT", "GUSD", "HBAR",
    "HNT", "HOT", "HT", "ICP", "IMX", "INJ", "KAS", "KAVA", "KCS", "KDA",
    "KLAY", "KNC", "KSM", "LDO", "LEO", "LINK", "LRC", "LTC", "LUNA", "LUNC",
    "MANA", "MBX", "MINA", "MKR", "NEAR", "NEO", "NEXO", "NFT", "OKB", "ONE",
    "OP", "ORDI", "PAXG", "PEPE", "PI", "POL", "QNT", "QTUM", "RPL", "RUNE",
    "RVN", "SAND", "SHIB", "SNX", "SOL", "STX", "SUI", "THETA", "TRX", "TUSD",
    "TWT", "UNI", "USDC", "USDD", "USDP", "USDT", "VET", "WAVES", "WEMIX", "WOO",
    "XAUT", "XBT", "XCH", "XDC", "XEC", "XEM", "XLM", "XMR", "XRP", "XTZ",
    "ZEC", "ZIL", "ANG", "ATS", "AZM", "BEF", "BGN", "BYR", "CUC", "CYP",
    "DEM", "EEK", "ESP", "FIM", "FRF", "GHC", "GRD", "HRK", "IEP", "ITL",
    "LTL", "LUF", "LVL", "MGF", "MRO", "MTL", "MZM", "NLG", "PTE", "ROL",
    "SDD", "SIT", "SKK", "SLL", "SRG", "STD", "TMM", "TRL", "VAL", "VEB",
    "VEF", "ZMK", "ZWD", "ZWL",
};
// clang-format on

}  // namespace

std::span<const TableCode> embeddedCatalogue() noexcept {
  return kCodes;
}

}  // namespace fexora
