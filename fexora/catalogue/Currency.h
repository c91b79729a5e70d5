// One currency, identified by its code. Every other unit passes these around.
//
// The shared catalogue's records live to the end of the process, and their references carry no
// count, so that copying one costs nothing (see CurrencyManager::currencies for what that means to
// a host). Two records are equal when their codes are equal and not empty, whichever objects hold
// them; a record with an empty code equals none, itself included. JSON form: {"code": text}; the
// code is read as one line of at most limits::kCodeCharacters (see platform/text/OneLine.h). One
// thread at a time, but any number may read while nobody writes.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "fexora/platform/mapping/MappableModel.h"

namespace fexora {

class Currency;
class NSCurrency;
struct Platform;
using CurrencyRef = std::shared_ptr<Currency>;
using NSCurrencyRef = std::shared_ptr<NSCurrency>;

class FEXORA_API Currency : public MappableModel, public std::enable_shared_from_this<Currency> {
 public:
  static CurrencyRef make();
  static CurrencyRef make(std::string code);

  Currency() = default;
  explicit Currency(std::string code) : code_(std::move(code)) {}
  // A copy has the code, and no display record yet.
  Currency(const Currency& other);
  Currency& operator=(const Currency& other);
  ~Currency() override;

  using MappableModel::mapping;
  std::size_t hashValue() const override;
  std::string description() const override;  // the code
  void mapping(Map& map) override;
  bool isEqualTo(const MappableModel& object) const override;

  // Canonically equivalent codes are equal; case counts.
  virtual const std::string& code() const { return code_; }
  virtual void setCode(std::string code);

  // The display record, made at the first read and kept until another one is written (null: the
  // next read makes one); see catalogue/NSCurrency.h, where these are defined. One thread at a
  // time.
  virtual NSCurrencyRef _NSCurrency();  // NOLINT(bugprone-reserved-identifier): the given name
  virtual void set_NSCurrency(NSCurrencyRef record);

 private:
  // A record may live in a block, or where nothing counts it: there is no reference to ask for.
  using std::enable_shared_from_this<Currency>::shared_from_this;
  using std::enable_shared_from_this<Currency>::weak_from_this;
  friend class CurrencyManager;
  friend class NSCurrency;
  static constexpr std::uint32_t kNoPlace = UINT32_MAX;

  std::string code_;
  // Where the record stands in its catalogue's list, and what the catalogue counts changed codes
  // by; kNoPlace and null outside of one, and once the catalogue has gone.
  std::uint32_t place_ = kNoPlace;
  std::atomic<std::uint64_t>* codeChanges_ = nullptr;
  NSCurrencyRef displayRecord(Platform& platform);
  NSCurrencyRef display_;
};

}  // namespace fexora
