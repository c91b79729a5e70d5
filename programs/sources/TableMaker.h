// Makes the tables of one source, figure by figure, and hands each out when the next one begins.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "programs/sources/PastTables.h"

namespace fexora::sources {

class TableMaker {
 public:
  TableMaker(std::string name, const TakeTable& take, PastReading& reading)
      : name_(std::move(name)), take_(take), reading_(reading) {}

  // "name, line 7, EUR: what"
  [[noreturn]] void reject(std::size_t line, std::string_view code, const std::string& what) const;

  // Of the tables that follow.
  void setSource(std::string_view source, std::string_view base);
  // "2026-09-11", at the beginning of a table.
  void begin(std::size_t line, std::string_view day);
  // Of the table that has begun; a code in any case.
  void add(std::size_t line, std::string_view code, std::string_view figure);
  // Hands out the table that has begun, if it has figures.
  void end();

 private:
  std::string name_;
  const TakeTable& take_;
  PastReading& reading_;
  PublishedTable table_;
  bool isOpen_ = false;
};

}  // namespace fexora::sources
