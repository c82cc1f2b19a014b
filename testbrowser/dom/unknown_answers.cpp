#include "dom/unknown_answers.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "com/encoding.h"

namespace testbrowser::dom {
namespace {

struct Question {
  std::string_view name;
  std::vector<std::string_view> answers;
};

const std::vector<Question>& Questions() {
  static const std::vector<Question> questions = {
      // Of a window: known once a script ran, from mode 9 on once a script assigned it; or as named.
      {"eval", {"assigned", "absent", "refused", "there"}},
      // Of documents below mode 9.
      {"class-search", {"there", "absent"}},
      // item(-1) of a collection: refused below mode 9 and null from there on; or one of both everywhere.
      {"negative-item", {"by-mode", "null", "refused"}},
      // Of an option without the attribute: empty below mode 9, its text from there on; or its text
      // everywhere.
      {"option-value", {"by-mode", "text"}},
      // setAttribute("value") of a list: selects in modes 5 and 7 only; or one of both everywhere.
      {"select-value-attribute", {"by-mode", "plain", "selects"}},
      // How a text area ends its lines from mode 9 on.
      {"textarea-lines", {"plain", "windows"}},
      // getAttribute("value", 2) of a field in modes 5 and 7.
      {"literal-value", {"source", "current"}},
      // getAttribute("style", 2) in modes 5 and 7.
      {"literal-style", {"object", "text"}},
      // setAttribute("value") of a text area: shown in modes 5 and 7 only; or one of both everywhere.
      {"area-value-attribute", {"by-mode", "plain", "shown"}},
      // click() of a disabled control.
      {"disabled-click", {"quiet", "refused", "runs"}},
      // focus() of a control that is disabled or not shown.
      {"hidden-focus", {"quiet", "refused"}},
      // currentStyle of an element out of the page.
      {"detached-style", {"null", "refused"}},
  };
  return questions;
}

std::map<std::string, std::string, std::less<>>& Chosen() {
  static std::map<std::string, std::string, std::less<>> chosen;
  return chosen;
}

}  // namespace

bool ChooseAnswer(std::string_view choice) {
  const std::string_view name = choice.substr(0, choice.find('='));
  const auto question = std::ranges::find(Questions(), name, &Question::name);
  if (question == Questions().end() || name.size() == choice.size()) return false;
  const std::string_view answer = choice.substr(name.size() + 1);
  if (std::ranges::find(question->answers, answer) == question->answers.end()) return false;
  Chosen().erase(std::string(name));
  if (answer != question->answers.front()) Chosen().emplace(name, answer);
  return true;
}

engine::JsonPtr ChosenAnswers() {
  engine::JsonObject answers;
  for (const auto& [name, answer] : Chosen()) answers.Add(name.c_str(), answer);
  return answers.Take();
}

std::optional<LRESULT> OnAnswerMessage(UINT message, WPARAM wparam) {
  static const UINT steering = RegisterWindowMessageW(L"testbrowser answer");
  if (message != steering) return std::nullopt;
  wchar_t choice[256] = L"";
  GlobalGetAtomNameW(static_cast<ATOM>(wparam), choice, static_cast<int>(std::size(choice)));
  return ChooseAnswer(quillmate::com::ToUtf8(choice)) ? 1 : 0;
}

}  // namespace testbrowser::dom
