// An answer that stands unchanged is not sent again, and counts as having come again.
#include <chrono>
#include <filesystem>
#include <string>

#include <sys/stat.h>

#include "tests/network/NetworkTest.h"

namespace fexora::test {
namespace {

using Kind = ResponseError::Kind;
using Connection = FaultServer::Connection;

const std::string kTag = "ETag: \"one\"\r\n";
const std::string kDate = "Last-Modified: Tue, 29 Sep 2026 00:00:00 GMT\r\n";
const std::string kUnchanged = "HTTP/1.1 304 Not Modified\r\nConnection: close\r\n\r\n";

class Revalidation : public NetworkTest {
 protected:
  Revalidation() : address_(server.address("/rates.json")) {}

  // What was asked for with the last request, by the names of its validators.
  std::string lastRequest() const { return server.requests().back(); }
  bool lastAskedWith(const std::string& header) const {
    return lastRequest().find("\r\n" + header + "\r\n") != std::string::npos;
  }
  bool lastAskedAnew() const { return lastRequest().find("\r\nIf-") == std::string::npos; }

  // An answer is kept after its completion; the end of the transport waits for that.
  void keep(const std::string& body, const std::string& headers) {
    EXPECT_NE(askServer(answer(body, headers)).record, nullptr);
    endTransport();
  }
  std::string keptFile() const {
    std::string file;
    for (const auto& entry : std::filesystem::directory_iterator(options.cacheFolder)) {
      EXPECT_TRUE(file.empty()) << "more than one: " << entry.path();
      file = entry.path();
    }
    return file;
  }

  const std::string address_;
};

TEST_F(Revalidation, Unchanged_CountsAsTheAnswerAgain) {
  keep(R"({"a": 1})", kTag + kDate);
  for (int i = 0; i < 2; ++i) {
    const Outcome outcome = askServer(kUnchanged);
    ASSERT_NE(outcome.record, nullptr) << outcome.error->message;
    EXPECT_EQ(outcome.record->a, NSNumber(1));
    EXPECT_TRUE(lastAskedWith("If-None-Match: \"one\""));
    EXPECT_TRUE(lastAskedWith("If-Modified-Since: Tue, 29 Sep 2026 00:00:00 GMT"));
    endTransport();  // the next process asks in the same way
  }
}

TEST_F(Revalidation, EitherValidatorAlone) {
  keep(R"({"a": 1})", kTag);
  askServer(kUnchanged);
  EXPECT_TRUE(lastAskedWith("If-None-Match: \"one\""));
  EXPECT_EQ(lastRequest().find("If-Modified-Since"), std::string::npos);
  keep(R"({"a": 2})", kDate);
  EXPECT_EQ(askServer(kUnchanged).record->a, NSNumber(2));
  EXPECT_TRUE(lastAskedWith("If-Modified-Since: Tue, 29 Sep 2026 00:00:00 GMT"));
  EXPECT_EQ(lastRequest().find("If-None-Match"), std::string::npos);
}

TEST_F(Revalidation, NewAnswer_TakesThePlaceOfTheKept) {
  keep(R"({"a": 1})", kTag);
  keep(R"({"a": 2})", "ETag: \"two\"\r\n");
  EXPECT_EQ(askServer(kUnchanged).record->a, NSNumber(2));
  EXPECT_TRUE(lastAskedWith("If-None-Match: \"two\""));
}

TEST_F(Revalidation, Gzip_IsKeptInflated) {
  keep(R"({"a": 1})", kTag);
  server.reply("/rates.json",
               answer(gzip(R"({"a": 2})"), "Content-Encoding: gzip\r\nETag: W/\"packed\"\r\n"));
  EXPECT_NE(ask(address_).record, nullptr);
  endTransport();
  EXPECT_EQ(askServer(kUnchanged).record->a, NSNumber(2));
  EXPECT_TRUE(lastAskedWith("If-None-Match: W/\"packed\""));
}

TEST_F(Revalidation, WhatFailed_LeavesTheKept) {
  keep(R"({"a": 1})", kTag);
  const std::string other = "ETag: \"two\"\r\n";
  for (const std::string& bytes :
       {answer("<html>", other), answer("{}", other, "500 Oops"), answer("{}", other, "404 Gone"),
        "HTTP/1.1 200 OK\r\n" + other + "Content-Length: 9\r\n\r\n{}", std::string()}) {
    EXPECT_TRUE(askServer(bytes).error.has_value());
    EXPECT_TRUE(lastAskedWith("If-None-Match: \"one\""));
  }
  EXPECT_EQ(askServer(kUnchanged).record->a, NSNumber(1));
}

TEST_F(Revalidation, WithoutValidator_NothingIsKept) {
  keep(R"({"a": 1})", "");
  EXPECT_FALSE(std::filesystem::exists(options.cacheFolder));
  // What cannot be sent back in a header is none.
  keep(R"({"a": 1})", "ETag: \"\x01\"\r\nLast-Modified: \xFF\r\n");
  keep(R"({"a": 1})", "ETag: \"" + std::string(2000, 'e') + "\"\r\n");
  EXPECT_FALSE(std::filesystem::exists(options.cacheFolder));
  EXPECT_EQ(askServer(kUnchanged).error->status, 304);
  EXPECT_TRUE(lastAskedAnew());
}

TEST_F(Revalidation, AddressAndContainer_AreApart) {
  keep(R"({"a": 1})", kTag);
  server.reply("/other.json", answer("{}"));
  ask(server.address("/other.json"));
  EXPECT_TRUE(lastAskedAnew());
  endTransport();
  options.container = "/other";
  EXPECT_EQ(askServer(kUnchanged).error->kind, Kind::httpStatus);
  EXPECT_TRUE(lastAskedAnew());
}

TEST_F(Revalidation, Redirected_IsKeptUnderTheFirstAddress) {
  server.reply("/target.json", answer(R"({"a": 1})", kTag));
  server.reply("/rates.json",
               answer("", "Location: /target.json\r\nETag: \"no\"\r\n", "302 Found"));
  EXPECT_NE(ask(address_).record, nullptr);
  server.reply("/target.json", kUnchanged);
  EXPECT_EQ(ask(address_).record->a, NSNumber(1));
  EXPECT_TRUE(lastAskedWith("If-None-Match: \"one\""));
}

TEST_F(Revalidation, FileAndFolder_AreTheUsersOwn) {
  keep(R"({"a": 1})", kTag);
  struct stat status {};
  ASSERT_EQ(::stat(options.cacheFolder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0700U);
  ASSERT_EQ(::stat(keptFile().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);

  ASSERT_EQ(::chmod(options.cacheFolder.c_str(), 0770), 0);
  askServer(answer(R"({"a": 2})", kTag));
  EXPECT_TRUE(lastAskedAnew());
  keep(R"({"a": 3})", kTag);
  ASSERT_EQ(log.lines().size(), 1U) << "said once";
  EXPECT_NE(log.lines().front().find(options.cacheFolder), std::string::npos);
}

TEST_F(Revalidation, DamagedFile_CountsAsNone) {
  keep(R"({"a": 1})", kTag + kDate);
  const std::string file = keptFile();
  const std::string whole = readFile(file);
  AnswerCache cache(Files::process(), options.cacheFolder, options.container, 1000);
  ASSERT_TRUE(cache.load(address_).has_value());
  EXPECT_EQ(cache.load(address_)->body, R"({"a": 1})");
  for (std::size_t i = 0; i < whole.size(); ++i) {
    writeFile(file, whole.substr(0, i));
    EXPECT_EQ(cache.load(address_), std::nullopt) << "cut at " << i;
    for (const int bit : {1, 0x80}) {
      std::string flipped = whole;
      flipped[i] = static_cast<char>(flipped[i] ^ bit);
      writeFile(file, flipped);
      EXPECT_EQ(cache.load(address_), std::nullopt) << "changed at " << i;
    }
  }
  writeFile(file, whole + "\n");
  EXPECT_EQ(cache.load(address_), std::nullopt);
  // The next answer mends it.
  keep(R"({"a": 2})", kTag);
  EXPECT_TRUE(lastAskedAnew());
  EXPECT_EQ(cache.load(address_)->body, R"({"a": 2})");
}

TEST_F(Revalidation, KeptBodyThatIsNotJson_IsAskedForAnew) {
  AnswerCache cache(Files::process(), options.cacheFolder, options.container, 1000);
  ASSERT_TRUE(cache.save(address_, {"\"one\"", "", "<html>"}));
  keep(R"({"a": 1})", kTag);
  EXPECT_TRUE(lastAskedAnew());
}

TEST_F(Revalidation, LargeOrLinkedFile_CountsAsNone) {
  AnswerCache cache(Files::process(), options.cacheFolder, options.container, 1000);
  ASSERT_TRUE(cache.save(address_, {"\"one\"", "", std::string(1000, ' ')}));
  EXPECT_TRUE(cache.load(address_).has_value());
  ASSERT_TRUE(cache.save(address_, {"\"one\"", "", std::string(1001, ' ')}));
  EXPECT_FALSE(cache.load(address_).has_value());

  ASSERT_TRUE(cache.save(address_, {"\"one\"", "", "{}"}));
  const std::string file = keptFile();
  std::filesystem::rename(file, scratch / "elsewhere");
  std::filesystem::create_symlink(scratch / "elsewhere", file);
  EXPECT_FALSE(cache.load(address_).has_value());
  std::filesystem::remove(file);
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_FALSE(cache.load(address_).has_value());
}

TEST_F(Revalidation, FolderThatCannotBeMade_HurtsNothing) {
  writeFile(scratch / "file", "");
  for (const std::string& folder : {scratch / "file", scratch / "file/below", std::string()}) {
    endTransport();
    options.cacheFolder = folder;
    keep(R"({"a": 1})", kTag);
    keep(R"({"a": 1})", kTag);
    EXPECT_TRUE(lastAskedAnew());
  }
}

TEST_F(Revalidation, ManyAddresses_OnlyTheLastAnswersAreKept) {
  options.cacheFolder = scratch / "many";
  AnswerCache cache(Files::process(), options.cacheFolder, "/container", 1000);
  const StoredAnswer answer{"\"one\"", "", "{}"};
  const auto save = [&](int i) {
    ASSERT_TRUE(cache.save("http://host/" + std::to_string(i), answer));
  };
  const auto names = [&] {
    return std::distance(std::filesystem::directory_iterator(options.cacheFolder), {});
  };
  save(0);
  std::filesystem::last_write_time(
      keptFile(), std::filesystem::last_write_time(keptFile()) - std::chrono::hours(1));
  const auto other = options.cacheFolder + "/of somebody else";
  writeFile(other, "x");
  for (int i = 1; i < 3 * limits::kKeptAnswers; ++i) {
    save(i);
    EXPECT_TRUE(cache.load("http://host/" + std::to_string(i)));
    EXPECT_EQ(cache.load("http://host/0").has_value(), i < limits::kKeptAnswers) << i;
  }
  EXPECT_EQ(names(), limits::kKeptAnswers + 1);
}

}  // namespace
}  // namespace fexora::test
