#include "engine/engine.h"

#include "engine/chromium_process.h"
#include "engine/engine_parts.h"
#include "engine/file_address.h"

namespace testbrowser::engine {
namespace {

/// A machine busy with other things takes several seconds.
constexpr std::chrono::seconds kStartLimit(30);

void AllowDownloads(Connection& connection, const std::string& folder) {
  connection.Send("", "Browser.setDownloadBehavior",
                  JsonObject().Add("behavior", "allow").Add("downloadPath", LinuxPath(folder)).Take());
}

}  // namespace

std::expected<std::unique_ptr<Engine>, std::string> Engine::Start(EngineOptions options) {
  auto sockets = ConnectedSocketPair();
  if (!sockets) return std::unexpected("no loopback sockets");
  if (!StartChromium(std::move(sockets->theirs)))
    return std::unexpected("no process could be started for Chromium");
  auto connection = std::make_shared<Connection>(std::move(sockets->ours));
  if (!connection->Request("", "Browser.getVersion", nullptr, kStartLimit)) {
    return std::unexpected("Chromium does not answer");
  }
  auto parts = std::make_unique<EngineParts>(std::move(connection), std::move(options.scripts));
  parts->Listen();
  if (!options.downloads.empty()) AllowDownloads(*parts->connection, options.downloads);
  return std::unique_ptr<Engine>(new Engine(std::move(parts)));
}

Engine::Engine(std::unique_ptr<EngineParts> parts) : parts_(std::move(parts)) {}
Engine::~Engine() {
  parts_->EndAll(false);
  parts_->connection->SetEventHandler(nullptr);
  parts_->connection->Send("", "Browser.close");
}

bool Engine::IsAlive() const { return parts_->connection->IsOpen(); }

std::shared_ptr<Page> Engine::OpenPage(PageListener* listener) { return parts_->OpenPage(listener); }

}  // namespace testbrowser::engine
