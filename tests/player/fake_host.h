// A library whose answers the test writes.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "runner.h"

namespace quillmate::player {

class FakeHost : public CommandHost {
 public:
  using Answers = std::map<std::string, std::optional<std::string>>;
  explicit FakeHost(Answers answers) : answers_(std::move(answers)) {}
  bool Has(const std::string& command) const override { return answers_.contains(command); }
  std::optional<std::string> Call(const std::string& command, const std::string&) override {
    return answers_.at(command);
  }

 private:
  Answers answers_;
};

}  // namespace quillmate::player
