// Agile references over the Global Interface Table.
#include "com/agile.h"

#include <objidl.h>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

#include "com/library_lifetime.h"

namespace quillmate::com {
namespace {

constexpr std::chrono::seconds kRegisterLimit(5);

/// The table is one object for all apartments of the process.
IGlobalInterfaceTable* Table() {
  static IGlobalInterfaceTable* const table = [] {
    // The multi-threaded apartment lives for as long as the process from here on, and the entries with it:
    // the system may clear those of an apartment that ends.
    CO_MTA_USAGE_COOKIE usage = nullptr;
    CoIncrementMTAUsage(&usage);
    IGlobalInterfaceTable* created = nullptr;
    CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&created));
    return created;
  }();
  return table;
}

/// @return the entry's cookie; 0, which no entry has, on failure.
DWORD RegisterHere(IUnknown* object, REFIID iid) {
  DWORD cookie = 0;
  if (object == nullptr || FAILED(Table()->RegisterInterfaceInGlobal(object, iid, &cookie))) return 0;
  return cookie;
}

DWORD RegisterFromStream(ComPtr<IStream> stream, const IID& iid) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) return 0;
  ComPtr<IUnknown> object;
  // Takes the stream's reference over, whatever the outcome.
  CoGetInterfaceAndReleaseStream(stream.Detach(), iid, reinterpret_cast<void**>(object.GetAddressOf()));
  const DWORD cookie = RegisterHere(object.Get(), iid);
  object.Reset();
  CoUninitialize();
  return cookie;
}

bool IsMultiThreaded() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
  return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) && type == APTTYPE_MTA;
}

/// Registers from the multi-threaded apartment, which lives on when the thread's own has gone.
DWORD Register(IUnknown* object, REFIID iid) {
  if (Table() == nullptr) return 0;
  if (IsMultiThreaded()) return RegisterHere(object, iid);
  ComPtr<IStream> stream;
  if (FAILED(CoMarshalInterThreadInterfaceInStream(iid, object, &stream))) return 0;
  std::packaged_task<DWORD(ComPtr<IStream>)> task(
      [iid](ComPtr<IStream> marshalled) { return RegisterFromStream(std::move(marshalled), iid); });
  auto cookie = task.get_future();
  KeepLibraryLoaded();
  std::thread(std::move(task), std::move(stream)).detach();
  // An entry that is made after that keeps its object until the process ends.
  return cookie.wait_for(kRegisterLimit) == std::future_status::ready ? cookie.get() : 0;
}

}  // namespace

AgileReference::AgileReference(ComPtr<IUnknown> object, REFIID iid, MayRelease may_release)
    : iid_(iid), may_release_(std::move(may_release)) {
  if (object == nullptr) return;
  cookie_ = Register(object.Get(), iid);
  id_ = NewObjectId();
  KeepThreadObject(id_, std::move(object), may_release_);
}

AgileReference& AgileReference::operator=(AgileReference&& other) noexcept {
  std::swap(id_, other.id_);
  std::swap(cookie_, other.cookie_);
  std::swap(iid_, other.iid_);
  std::swap(may_release_, other.may_release_);
  return *this;
}

AgileReference::~AgileReference() {
  if (id_ == 0) return;
  // Deliberate: a page that hangs keeps its reference. Releasing it is a call to the page.
  const bool release = !may_release_ || may_release_();
  EndThreadObjects(id_, release);
  if (cookie_ != 0 && release) Table()->RevokeInterfaceFromGlobal(cookie_);
}

IUnknown* AgileReference::Get() const {
  if (id_ == 0) return nullptr;
  if (IUnknown* kept = FindThreadObject(id_)) return kept;
  ComPtr<IUnknown> object;
  if (cookie_ == 0 || FAILED(Table()->GetInterfaceFromGlobal(
                          cookie_, iid_, reinterpret_cast<void**>(object.GetAddressOf())))) {
    return nullptr;
  }
  KeepThreadObject(id_, object, may_release_);
  return object.Get();
}

}  // namespace quillmate::com
