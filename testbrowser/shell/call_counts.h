// Which calls came, and which of them are to be refused.
#pragma once

#include <windows.h>
#include <map>
#include <string>

namespace testbrowser::shell {

/// How a call is refused.
enum class RefusalAnswer {
  kRejected,    ///< by the filter
  kRetryLater,  ///< by the object asked, as the others
  kDisconnected,
  kNull  ///< success and no object, where one is asked for; other calls are answered
};

class CallCounts {
 public:
  void Reset() { *this = CallCounts(); }
  /// Notes a call. @return whether it is to be refused.
  bool Note(REFIID interface_id, unsigned method);

  /// Whether a call is COM's own, for more interfaces and for references.
  static bool IsOfCom(REFIID interface_id);

  long total() const { return total_; }
  long rejected() const { return rejected_; }
  /// @param name "{IID}" for all methods of an interface, or "{IID}:METHOD" with the method's place in the
  /// interface (IUnknown's three count).
  long CountOf(const std::wstring& name) const;
  /// A line "{IID}:METHOD COUNT" for each kind of call, with the interface's name when it is registered.
  std::string Report() const;

  /// Refuses the n-th call from now on, and those after it too when `and_later`; 0 refuses none.
  void RejectNth(long n, bool and_later);
  void SetAnswer(RefusalAnswer answer) { answer_ = answer; }
  RefusalAnswer answer() const { return answer_; }

 private:
  /// Whether a call of COM's own can be refused as wanted.
  bool CanRefuseOfCom(unsigned method) const;

  std::map<std::wstring, long> counts_;
  long total_ = 0;
  long rejected_ = 0;
  long until_rejection_ = 0;
  bool and_later_ = false;
  RefusalAnswer answer_ = RefusalAnswer::kRejected;
};

}  // namespace testbrowser::shell
