#include "fexora/catalogue/CurrencyManager.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "fexora/catalogue/CodeIndex.h"
#include "fexora/platform/base/Guarded.h"
#include "fexora/platform/base/Limits.h"
#include "fexora/platform/base/NoDestructor.h"
#include "fexora/platform/files/ReadFile.h"
#include "fexora/platform/plist/PropertyListReader.h"
#include "fexora/platform/plist/XmlPlistWriter.h"
#include "fexora/platform/text/TakeLiteral.h"
#include "fexora/resources/EmbeddedCatalogue.h"

namespace fexora {
namespace {

constexpr std::string_view kLookUp = "Looking a currency up";

// Whether the resource is the one that comes with the library, which need not be read: its codes
// are built in.
bool isEmbedded(std::string_view bytes) noexcept {
  if (!takeText(bytes, kXmlPlistHead) || !takeLiteral(bytes, "<array>\n")) return false;
  for (const std::string_view code : embeddedCatalogue()) {
    if (!takeLiteral(bytes, "\t<string>") || !takeText(bytes, code) ||
        !takeLiteral(bytes, "</string>\n")) {
      return false;
    }
  }
  return takeLiteral(bytes, "</array>\n") && bytes == kXmlPlistTail;
}

// The resource's codes. None where those that are built in take their place: `reason` says why,
// unless they are the same.
std::optional<std::vector<std::string>> readCodes(Platform& platform, const std::string& path,
                                                  std::string& reason) {
  const auto file = readWholeFile(*platform.files, path, limits::kCatalogueFileBytes);
  if (!file.ok()) {
    reason = file.error().message();
    return std::nullopt;
  }
  if (isEmbedded(file->bytes)) return std::nullopt;
  const auto list = readPropertyList(file->bytes);
  if (!list.ok()) {
    reason = list.error;
    return std::nullopt;
  }
  const Array* elements = list.value.array();
  if (elements == nullptr) {
    reason = "its root is not an array";
    return std::nullopt;
  }
  std::vector<std::string> codes;
  codes.reserve(elements->size());
  for (const Value& element : *elements) {
    if (element.string() == nullptr) {
      reason = "element " + std::to_string(codes.size()) + " is not a string";
      return std::nullopt;
    }
    codes.push_back(*element.string());
  }
  return codes;
}

std::optional<std::vector<std::string>> installedCodes(Platform& platform) {
  const auto path = platform.resources->path("Currency", "plist");
  if (!path) return std::nullopt;
  std::string reason;
  auto codes = readCodes(platform, *path, reason);
  if (!reason.empty()) {
    platform.log->write("The catalogue " + *path + " cannot be used (" + reason +
                        "); the built-in one takes its place");
  }
  return codes;
}

}  // namespace

CurrencyManager::CurrencyManager() : CurrencyManager(Platform::process()) {}

CurrencyManager::CurrencyManager(Platform& platform)
    : CurrencyManager(platform, Lifetime::counted) {}

CurrencyManager::CurrencyManager(Platform& platform, Lifetime lifetime) : platform_(platform) {
  guarded(*platform_.log, "Loading the catalogue", [&] { loadCurrencies(lifetime); });
}

CurrencyManager::~CurrencyManager() {
  preparing_.join();
  // Whoever holds a record may keep it.
  for (const CurrencyRef& currency : _currencies) {
    currency->place_ = kNoPlace;
    currency->codeChanges_ = nullptr;
  }
}

void CurrencyManager::loadCurrencies(Lifetime lifetime) {
  auto codes = installedCodes(platform_);
  const auto builtIn = embeddedCatalogue();
  const std::size_t count = codes ? codes->size() : builtIn.size();
  std::vector<CurrencyRef> currencies;
  currencies.reserve(count);
  // Records that live for ever stand in one block, and their references count nothing.
  std::unique_ptr<Currency[]> block;
  if (lifetime == Lifetime::endless) block = std::make_unique<Currency[]>(count);
  for (std::size_t place = 0; place < count; ++place) {
    auto currency = block != nullptr ? CurrencyRef(std::shared_ptr<void>(), &block[place])
                                     : std::make_shared<Currency>();
    if (codes) {
      currency->code_ = std::move((*codes)[place]);
    } else {
      currency->code_ = builtIn[place];
    }
    currency->place_ = static_cast<std::uint32_t>(place);
    currency->codeChanges_ = &codeChanges_;
    currencies.push_back(std::move(currency));
  }
  _currencies = std::move(currencies);
  block_ = std::move(block);
  // There is none yet.
  codeChanges_ = 1;
  indexCodes();
}

void CurrencyManager::indexCodes() const {
  const std::lock_guard lock(indexMutex_);
  if (indexIsCurrent()) return;
  const std::uint64_t changes = codeChanges_.load(std::memory_order_acquire);
  codes_ = std::make_unique<const CodeIndex>(_currencies, *platform_.text);
  indexedChanges_.store(changes, std::memory_order_release);
}

std::uint32_t CurrencyManager::placeOfCode(std::string_view code) const {
  if (!indexIsCurrent()) indexCodes();
  return codes_ != nullptr ? codes_->placeOf(code, *platform_.text) : kNoPlace;
}

std::uint32_t CurrencyManager::placeOf(const Currency& currency) const {
  const std::uint32_t place = currency.place_;
  // A record of this catalogue is usually the first with its code: then nothing is looked up.
  if (indexIsCurrent() && place < _currencies.size() && _currencies[place].get() == &currency &&
      codes_->count() == _currencies.size()) {
    return place;
  }
  return placeOfCode(currency.code());
}

CurrencyRef CurrencyManager::currencyForCode(std::string_view code) const {
  return guardedOr(*platform_.log, kLookUp, CurrencyRef(), [&] {
    const std::uint32_t place = placeOfCode(code);
    return place != kNoPlace ? _currencies[place] : nullptr;
  });
}

bool CurrencyManager::hasCurrency(std::string_view code) const {
  return guardedOr(*platform_.log, kLookUp, false, [&] { return placeOfCode(code) != kNoPlace; });
}

std::optional<Value> CurrencyManager::perform(std::string_view selector, const Array& arguments) {
  if (selector == "init" && arguments.empty()) return Value();
  if (selector == "hasCurrency:" && arguments.size() == 1 && arguments[0].string() != nullptr) {
    return Value(hasCurrency(*arguments[0].string()));
  }
  return NSObject::perform(selector, arguments);
}

CurrencyManager& currencyManager() {
  struct Shared : CurrencyManager {
    Shared() : CurrencyManager(Platform::process(), Lifetime::endless) {}
  };
  static NoDestructor<Shared> manager;
  return *manager;
}

}  // namespace fexora
