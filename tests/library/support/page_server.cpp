// One thread accepts, one a connection answers. HTTP as far as a browser needs it for one page a connection.
#include "support/page_server.h"

#include <winsock2.h>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace quillmate::test {
namespace {

constexpr std::string_view kAfter = "/after/";

struct Sockets {
  Sockets() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
  }
};

std::string ReadRequest(SOCKET connection) {
  std::string request;
  char buffer[4096];
  while (!request.contains("\r\n\r\n")) {
    const int length = recv(connection, buffer, sizeof buffer, 0);
    if (length <= 0) break;
    request.append(buffer, static_cast<size_t>(length));
  }
  return request;
}

/// The path of "GET /path?query HTTP/1.1", without the query.
std::string PathOf(const std::string& request) {
  const size_t begin = request.find('/');
  return begin == std::string::npos ? "" : request.substr(begin, request.find_first_of(" ?", begin) - begin);
}

void SendAll(SOCKET connection, const std::string& text) {
  for (size_t sent = 0; sent < text.size();) {
    const int length = send(connection, text.data() + sent, static_cast<int>(text.size() - sent), 0);
    if (length <= 0) return;
    sent += static_cast<size_t>(length);
  }
}

}  // namespace

PageServer::PageServer() {
  static const Sockets sockets;
  listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int size = sizeof address;
  if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      listen(listener_, SOMAXCONN) != 0 ||
      getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    throw std::runtime_error("no port for test pages");
  }
  port_ = ntohs(address.sin_port);
  accepting_ = std::thread([this] { Accept(); });
}

PageServer::~PageServer() {
  closesocket(listener_);
  accepting_.join();
  {
    const std::lock_guard lock(mutex_);
    is_closed_ = true;
    closing_.notify_all();
    for (const SOCKET connection : open_) shutdown(connection, SD_BOTH);
  }
  for (std::thread& thread : answering_) thread.join();
  for (const SOCKET connection : open_) closesocket(connection);
}

std::string PageServer::Hold(int ms) { return HoldUntilAnswered("/after/" + std::to_string(ms)); }

std::string PageServer::HoldUntilAnswered(const std::string& path) {
  return "(function () { var r = new XMLHttpRequest; r.open('GET', '" + path +
         "?' + Math.random(), false); try { r.send() } catch (e) {} })();";
}

std::string PageServer::Address(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

std::string PageServer::Page(const std::string& path, std::string html, std::string headers) {
  const std::lock_guard lock(mutex_);
  pages_.insert_or_assign(path, Response{std::move(headers), std::move(html)});
  return Address(path);
}

void PageServer::Accept() {
  SOCKET connection;
  while ((connection = accept(listener_, nullptr, nullptr)) != INVALID_SOCKET) {
    {
      const std::lock_guard lock(mutex_);
      open_.push_back(connection);
    }
    answering_.emplace_back([this, connection] { Answer(connection); });
  }
}

void PageServer::Answer(unsigned long long connection) {
  const std::string path = PathOf(ReadRequest(connection));
  if (path == "/endless") return;
  if (path.starts_with(kAfter)) {
    std::unique_lock lock(mutex_);
    closing_.wait_for(lock, std::chrono::milliseconds(std::atoi(path.c_str() + kAfter.size())),
                      [this] { return is_closed_; });
  }
  Response response{"", "not found"};
  {
    const std::lock_guard lock(mutex_);
    if (const auto page = pages_.find(path); page != pages_.end()) response = page->second;
  }
  SendAll(connection, "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nConnection: close\r\n" +
                          response.headers + "Content-Length: " + std::to_string(response.body.size()) +
                          "\r\n\r\n" + response.body);
  shutdown(connection, SD_SEND);
}

}  // namespace quillmate::test
