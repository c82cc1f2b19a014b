// A web server for test pages on 127.0.0.1: pages are given as text, in the test that needs them.
#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quillmate::test {

/// Serves its pages on a port of its own until it is destroyed. Two servers are two origins.
class PageServer {
 public:
  PageServer();
  PageServer(const PageServer&) = delete;
  PageServer& operator=(const PageServer&) = delete;
  ~PageServer();

  /// Serves a page from now on.
  /// @param path begins with a slash.
  /// @param headers further response headers, each ended by CR LF.
  /// @return the page's address.
  std::string Page(const std::string& path, std::string html, std::string headers = {});

  /// An address that is connected to and never answered: a page that goes on loading.
  std::string EndlessPage() const { return Address("/endless"); }

  /// A statement for a page of this server that keeps the page's thread for a time, or until the server ends. Unlike a
  /// loop it costs no processor time, which tests on other desktops need.
  static std::string Hold(int ms);
  static std::string HoldForEver() { return HoldUntilAnswered("/endless"); }

 private:
  struct Response {
    std::string headers;
    std::string body;
  };

  static std::string HoldUntilAnswered(const std::string& path);
  std::string Address(const std::string& path) const;
  void Accept();
  void Answer(unsigned long long connection);

  unsigned long long listener_;
  unsigned short port_ = 0;
  std::mutex mutex_;
  std::condition_variable closing_;
  bool is_closed_ = false;
  std::map<std::string, Response> pages_;
  std::vector<unsigned long long> open_;
  std::thread accepting_;
  std::vector<std::thread> answering_;
};

}  // namespace quillmate::test
