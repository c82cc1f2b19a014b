// Element search: on random pages it finds what a walk over every element would, by whatever way it asks.
#include <windows.h>
#include <cstdlib>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "com/encoding.h"
#include "support/call_filter.h"
#include "support/page_test.h"

namespace quillmate::test {
namespace {

class Search : public PageTest {};

/// An element of a random page, as the test knows it.
struct Node {
  std::string tag;
  std::string id;
  std::string name;
  std::string classes;
  int number = 0;
  Node* parent = nullptr;
  std::vector<std::unique_ptr<Node>> children;
};

// In UTF-8, as text of a page. The third is in no western code page: commands see it as "?".
const char* const kWords[] = {"a", "A", "\xE6\x97\xA5", "b", "\xC3\xA9", "a b", "?"};
// What no element of a random page has.
constexpr char kAbsent[] = "none";

class RandomPage {
 public:
  explicit RandomPage(unsigned seed) : random_(seed) {
    root_.tag = "HTML";
    Add(root_, "HEAD");
    body_ = Add(root_, "BODY");
    for (int i = 0; i < 24; ++i) Grow();
  }

  const Node& root() const { return root_; }
  std::string Html() const {
    std::string html;
    for (const auto& child : body_->children) Write(*child, html);
    return html;
  }
  /// A path that begins with a step that can be asked directly, or nearly so.
  std::string RandomPath() {
    static const char* const kFirst[] = {"//*[@id='%']",       "/*[@id='%']",     "//DIV[@id='%']",
                                         "/span[id='%']",      "//*[@class='%']", "//b[@class='%']",
                                         "//input[@name='%']", "//*[@name='%']",  "//div[@name='%']"};
    static const char* const kRest[] = {
        "",          "",      "",       "/..",          "/../..",       "/div",
        "//span[2]", "/*[1]", "/..//b", "/../../div/b", "//*[@id='a']", "/./.."};
    std::string first = Pick(kFirst);
    const size_t place = first.find('%');
    const std::string value = random_() % 5 == 0 ? kAbsent : Pick(kWords);
    return first.replace(place, 1, value) + Pick(kRest);
  }

 private:
  template <size_t N>
  std::string Pick(const char* const (&choices)[N]) {
    return choices[random_() % N];
  }

  Node* Add(Node& parent, const std::string& tag) {
    parent.children.push_back(std::make_unique<Node>());
    Node* node = parent.children.back().get();
    node->tag = tag;
    node->parent = &parent;
    return node;
  }

  void Grow() {
    static const char* const kTags[] = {"DIV", "SPAN", "B", "INPUT", "DIV"};
    Node* parent = body_;
    while (!parent->children.empty() && random_() % 3 != 0) {
      Node* next = parent->children[random_() % parent->children.size()].get();
      if (next->tag == "INPUT") break;
      parent = next;
    }
    Node* node = Add(*parent, Pick(kTags));
    node->number = ++count_;
    if (random_() % 3 == 0) node->id = Pick(kWords);
    if (random_() % 4 == 0) node->name = Pick(kWords);
    if (random_() % 3 == 0) node->classes = Pick(kWords);
  }

  static void Write(const Node& node, std::string& html) {
    const auto attribute = [&](const char* name, const std::string& value) {
      if (!value.empty()) html += std::string(" ") + name + "=\"" + value + '"';
    };
    html += "<" + node.tag + " title=" + std::to_string(node.number);
    attribute("id", node.id);
    attribute("name", node.name);
    attribute("class", node.classes);
    html += ">";
    for (const auto& child : node.children) Write(*child, html);
    if (node.tag != "INPUT") html += "</" + node.tag + ">";
  }

  std::mt19937 random_;
  Node root_;
  Node* body_ = nullptr;
  int count_ = 0;
};

/// The page's text as a command compares it.
std::string Narrow(const std::string& utf8) { return com::ToAnsi(com::FromUtf8(utf8)); }

/// Evaluates a path over the test's own tree: every element looked at, nothing asked directly.
class PlainWalk {
 public:
  using Nodes = std::vector<const Node*>;

  PlainWalk(const Node& root, const std::string& path) : root_(root) {
    for (size_t begin = 0; begin < path.size();) {
      const size_t end = std::min(path.find('/', path.find_first_not_of('/', begin)), path.size());
      steps_.push_back(path.substr(begin, end - begin));
      begin = end;
    }
    Evaluate(nullptr, 0);
  }

  const Nodes& found() const { return found_; }
  std::string message() const {
    const std::string& step = steps_[failed_];
    return "Find element failed in " + std::to_string(failed_ + 1) + "'s Xpath node [ " + Narrow(step) +
           (step.ends_with(']') ? "" : "[]") + " ]!";
  }

 private:
  void Evaluate(const Node* context, size_t step) {
    if (step == steps_.size()) {
      if (context != nullptr) found_.push_back(context);
      return;
    }
    if (steps_[step] == "/.") return Evaluate(context, step + 1);
    if (steps_[step] == "/..") return Evaluate(context != nullptr ? context->parent : nullptr, step + 1);
    const Nodes matches = Matches(context, steps_[step]);
    if (matches.empty()) failed_ = std::max(failed_, step);
    for (const Node* match : matches) Evaluate(match, step + 1);
  }

  Nodes Matches(const Node* context, const std::string& step) const {
    const bool deep = context == nullptr || step.starts_with("//");
    const size_t bracket = step.find('[');
    const std::string tag =
        step.substr(step.starts_with("//") ? 2 : 1, bracket - (step.starts_with("//") ? 2 : 1));
    Nodes collection;
    if (context == nullptr)
      Collect(root_, tag, true, true, collection);
    else
      Collect(*context, tag, deep, false, collection);
    return bracket == std::string::npos ? collection : Select(collection, step.substr(bracket + 1));
  }

  static void Collect(const Node& from, const std::string& tag, bool deep, bool self, Nodes& into) {
    const auto wanted = [&](const Node& node) {
      return tag == "*" || _stricmp(tag.c_str(), node.tag.c_str()) == 0;
    };
    if (self && wanted(from)) into.push_back(&from);
    for (const auto& child : from.children) {
      if (deep)
        Collect(*child, tag, true, true, into);
      else if (wanted(*child))
        into.push_back(child.get());
    }
  }

  static Nodes Select(const Nodes& nodes, const std::string& selector) {
    if (const size_t position = static_cast<size_t>(std::atoi(selector.c_str())); position > 0)
      return nodes.size() < position ? Nodes() : Nodes{nodes[position - 1]};
    const size_t quote = selector.find('\'');
    const std::string value = Narrow(selector.substr(quote + 1, selector.rfind('\'') - quote - 1));
    Nodes kept;
    for (const Node* node : nodes) {
      const std::string& actual = selector.contains("id=")     ? node->id
                                  : selector.contains("name=") ? node->name
                                                               : node->classes;
      if (!actual.empty() && Narrow(actual) == value) kept.push_back(node);
    }
    return kept;
  }

  const Node& root_;
  std::vector<std::string> steps_;
  Nodes found_;
  size_t failed_ = 0;
};

std::string InScript(const std::string& utf8) {
  std::string text = "'";
  for (const wchar_t unit : com::FromUtf8(utf8)) {
    char escaped[8] = "";
    std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(unit));
    text += escaped;
  }
  return text + "'";
}

/// Compares what commands find by a path with what the plain walk finds.
void ComparePath(const RandomPage& page, const std::string& path) {
  SCOPED_TRACE(path);
  const PlainWalk walk(page.root(), path);
  const std::string locator = "xpath=" + path;
  EXPECT_EQ(Call("getelementcount", {{"target", locator}}),
            (Envelope{true, std::to_string(walk.found().size()), {}}));
  if (walk.found().empty()) {
    EXPECT_EQ(Call("gettext", {{"target", locator}}), Failed(walk.message()));
  } else if (walk.found().front()->number > 0) {
    EXPECT_EQ(Call("getattribute", {{"target", locator}, {"value", "title"}}),
              Answered(std::to_string(walk.found().front()->number)));
  }
}

// The ways of asking differ between document modes, and in quirks layout between the engine's own lists.
const char* const kModes[] = {"<!doctype html>",
                              "<!doctype html><meta http-equiv=X-UA-Compatible content='IE=8'>",
                              "<meta http-equiv=X-UA-Compatible content='IE=edge'><body>", "<body>"};

// QUILLMATE_TEST_TREES raises the number of trees.
TEST_F(Search, FindsWhatAWalkOverEveryElementFinds) {
  const char* wanted = std::getenv("QUILLMATE_TEST_TREES");
  const unsigned trees = wanted != nullptr ? static_cast<unsigned>(std::atoi(wanted)) : 2;
  for (const char* mode : kModes) {
    Show(mode);
    for (unsigned seed = 1; seed <= trees; ++seed) {
      SCOPED_TRACE(std::string(mode) + " tree " + std::to_string(seed));
      RandomPage page(seed);
      Script("document.body.innerHTML = " + InScript(page.Html()) + "; 0");
      for (int i = 0; i < 6; ++i) ComparePath(page, page.RandomPath());
      if (HasFailure()) FAIL() << page.Html();
    }
  }
}

TEST_F(Search, FindsNothingByAnyFormOfAnAbsentValue) {
  for (const char* mode : kModes) {
    Show(std::string(mode) + "<div id=a class=b><input name=c></div>");
    for (const char* locator :
         {"id=none", "id='none'", "name=none", "name=none[1]", "name=c[2]", "name=c[@id='none']",
          "class=none", "class=none[1]", "class=b[@title='none']", "class=b none"}) {
      SCOPED_TRACE(std::string(mode) + locator);
      EXPECT_EQ(Call("gettext", {{"target", locator}}), Failed("Element not found!"));
      EXPECT_EQ(Call("getelementcount", {{"target", locator}}), (Envelope{true, "0", {}}));
    }
  }
}

// A long list is read in batches; the items around the edges of a batch are the ones to lose.
TEST_F(Search, WalksLongListsToTheirEnd) {
  for (const char* mode : {"<!doctype html>", "<body>"}) {
    Show(std::string(mode) + "<ul id=list></ul>");
    Script(
        "var s = ''; for (var i = 1; i <= 300; ++i) s += '<li title=' + i + ' class=\"c' + i % 3 + '\">t' + i + '</li>';"
        "document.getElementById('list').innerHTML = s; 0");
    const struct {
      const char* path;
      const char* count;
      const char* first;
    } rows[] = {
        {"//li", "300", "1"},
        {"//li[300]", "1", "300"},
        {"//li[301]", "0", ""},
        {"//li[@title='65']", "1", "65"},
        {"//*[@title='300']", "1", "300"},
        {"//li[text()='t129']", "1", "129"},
        {"//li[contains(text(),'99')]", "3", "99"},
        {"//ul/li[starts-with(@title,'2')]", "111", "2"},
        {"//li[@class='c0']", "100", "3"},
        {"//ul/*", "300", "1"},
        {"//li[@title='none']", "0", ""},
    };
    for (const auto& row : rows) {
      SCOPED_TRACE(std::string(mode) + row.path);
      const std::string locator = std::string("xpath=") + row.path;
      EXPECT_EQ(Call("getelementcount", {{"target", locator}}), (Envelope{true, row.count, {}}));
      if (*row.first != '\0') {
        EXPECT_EQ(Call("getattribute", {{"target", locator}, {"value", "title"}}), Answered(row.first));
      }
    }
  }
}

// One refused call may fail the command; it never makes it take the next best element.
TEST_F(Search, ARefusedCallNeverChangesWhatIsFound) {
  Show(
      "<!doctype html><title>Refusals</title><div id=ok><button title=inner class=x name=n>1</button></div>"
      "<button class=x name=n title=2>2</button><p class=x title=3>3</p><span id=twin>a</span><b id=twin>b</b>");
  const CallFilter filter(TheBrowser().Page());
  for (const char* target :
       {"class=x[@title='2']", "name=n[2]", "class=x[contains(text(),'2')]", "xpath=//button[@title='inner']",
        "xpath=//div[@id='ok']/button/../button", "xpath=//b[@id='twin']", "xpath=//*[@class='x']",
        "xpath=//p", "xpath=//*[@id='none']", "xpath=//button[@name='none']", "xpath=//div/*[@title='none']",
        "id=none"}) {
    for (const char* command : {"gettext", "getelementcount", "iselementexist"}) {
      SCOPED_TRACE(target + std::string(" ") + command);
      Call(command, {{"target", target}});
      const Envelope healthy = Call(command, {{"target", target}});
      for (int position = 1; position < 100; ++position) {
        filter.Reset();
        filter.Refuse(position);
        const Envelope answer = Call(command, {{"target", target}});
        if (filter.Refused() == 0) break;
        EXPECT_TRUE(answer == healthy || (!answer.success && answer.result == "0" && !answer.log.empty()))
            << "call " << position << " refused: " << answer;
      }
      filter.Reset();
    }
  }
}

}  // namespace
}  // namespace quillmate::test
