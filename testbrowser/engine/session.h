// One DevTools session: a page's own end of the connection.
#pragma once

#include <memory>
#include <string>

#include "engine/connection.h"

namespace testbrowser::engine {

struct Session {
  std::shared_ptr<Connection> connection;
  std::string id;

  void Send(const char* method, JsonPtr params = nullptr, ReplyHandler handler = nullptr) const {
    connection->Send(id, method, std::move(params), std::move(handler));
  }
  Reply Request(const char* method, JsonPtr params = nullptr) const {
    return connection->Request(id, method, std::move(params));
  }
};

}  // namespace testbrowser::engine
