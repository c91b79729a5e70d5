#include <algorithm>
#include <memory>
#include <new>
#include <type_traits>

#include <expat.h>

#include "fexora/platform/base/ModuleEntries.h"
#include "fexora/platform/plist/PlistBuilder.h"
#include "fexora/platform/plist/XmlPlistReader.h"
#include "fexora/platform/plist/expat/ExpatLine.h"
#include "fexora/platform/text/NumberText.h"

namespace fexora {
namespace {

struct FreeParser {
  void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using ParserPointer = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

// Expat scans a token that goes beyond a piece once more with each further piece, so pieces are a
// share of the whole: a huge token costs a few scans, not one a kilobyte.
constexpr std::size_t kPieceBytes = std::size_t{256} << 10;
constexpr std::size_t kPieces = 8;

// One run of expat over one text. Its handlers are called from C, so nothing is thrown through
// them.
class ExpatRun {
 public:
  ExpatRun();

  bool feed(std::string_view bytes, bool last) noexcept {
    return XML_Parse(parser_.get(), bytes.data(), static_cast<int>(bytes.size()), last ? 1 : 0) ==
           XML_STATUS_OK;
  }
  PlistBuilder& builder() noexcept { return builder_; }
  bool outOfMemory() const noexcept {
    return outOfMemory_ || XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_MEMORY;
  }
  std::string error() const;

 private:
  static ExpatRun& of(void* self) noexcept { return *static_cast<ExpatRun*>(self); }
  static void onBegin(void* self, const char* name, const char** attributes);
  static void onEnd(void* self, const char* name);
  static void onText(void* self, const char* text, int length);
  static void onDoctype(void* self, const char* name, const char* system, const char* external,
                        int hasInternalSubset);
  static void onEntityDeclaration(void* self, const char* name, int isParameter, const char* value,
                                  int length, const char* base, const char* system,
                                  const char* external, const char* notation);
  static void onSkippedEntity(void* self, const char* name, int isParameter);

  // Makes the run end when `step` answers false.
  template <class Step>
  void guarded(Step step) noexcept;
  void reject(const char* why) noexcept;

  ParserPointer parser_;
  PlistBuilder builder_;
  bool outOfMemory_ = false;
  const char* rejection_ = nullptr;
};

ExpatRun::ExpatRun() : parser_(XML_ParserCreate(nullptr)) {
  if (parser_ == nullptr) throw std::bad_alloc();
  XML_Parser parser = parser_.get();
  XML_SetUserData(parser, this);
  XML_SetElementHandler(parser, onBegin, onEnd);
  XML_SetCharacterDataHandler(parser, onText);
  XML_SetStartDoctypeDeclHandler(parser, onDoctype);
  XML_SetEntityDeclHandler(parser, onEntityDeclaration);
  XML_SetSkippedEntityHandler(parser, onSkippedEntity);
}

template <class Step>
void ExpatRun::guarded(Step step) noexcept {
  // Expat may still report the second half of an empty element after it was told to stop.
  if (outOfMemory_ || rejection_ != nullptr || !builder_.error().empty()) return;
  try {
    if (step()) return;
  } catch (const std::bad_alloc&) {
    outOfMemory_ = true;
  }
  XML_StopParser(parser_.get(), XML_FALSE);
}

void ExpatRun::reject(const char* why) noexcept {
  guarded([this, why] {
    rejection_ = why;
    return false;
  });
}

void ExpatRun::onBegin(void* self, const char* name, const char** /*attributes*/) {
  of(self).guarded([&] { return of(self).builder_.begin(name); });
}

void ExpatRun::onEnd(void* self, const char* /*name*/) {
  of(self).guarded([&] { return of(self).builder_.end(); });
}

void ExpatRun::onText(void* self, const char* text, int length) {
  of(self).guarded([&] {
    return of(self).builder_.text({text, static_cast<std::size_t>(length)});
  });
}

void ExpatRun::onDoctype(void* self, const char* name, const char* /*system*/,
                         const char* /*external*/, int hasInternalSubset) {
  if (hasInternalSubset != 0) of(self).reject("declarations inside the document type");
  if (std::string_view(name) != "plist") of(self).reject("a document type other than plist");
}

void ExpatRun::onEntityDeclaration(void* self, const char* /*name*/, int /*isParameter*/,
                                   const char* /*value*/, int /*length*/, const char* /*base*/,
                                   const char* /*system*/, const char* /*external*/,
                                   const char* /*notation*/) {
  of(self).reject("a declared entity");
}

void ExpatRun::onSkippedEntity(void* self, const char* /*name*/, int /*isParameter*/) {
  of(self).reject("an undeclared entity");
}

std::string ExpatRun::error() const {
  std::string why = builder_.error();
  if (why.empty()) {
    why = rejection_ != nullptr ? rejection_ : XML_ErrorString(XML_GetErrorCode(parser_.get()));
  }
  const auto line = static_cast<std::int64_t>(currentLine(parser_.get()));
  return "line " + integerText(line) + ": " + why;
}

PlistResult readAll(std::string_view bytes) {
  ExpatRun run;
  const std::size_t piece = std::max(kPieceBytes, bytes.size() / kPieces + 1);
  // Beyond expat's own count of bytes.
  if (piece > std::size_t{1} << 30) return {{}, "the file is too large"};
  do {
    const std::string_view next = bytes.substr(0, piece);
    bytes.remove_prefix(next.size());
    if (run.feed(next, bytes.empty())) continue;
    if (run.outOfMemory()) throw std::bad_alloc();
    return {{}, run.error()};
  } while (!bytes.empty());
  return {run.builder().takeRoot(), {}};
}

}  // namespace
}  // namespace fexora

const fexora::XmlPlistModule* fexora_xml_module() {
  static constexpr fexora::XmlPlistModule module{&fexora::readAll};
  return &module;
}
