// Agile references over the Global Interface Table; each thread's pointers, and the spy that drops them before the
// thread leaves its apartment.
#include "com/agile.h"

#include <objidl.h>
#include <chrono>
#include <future>
#include <map>
#include <memory>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "com/process.h"

namespace quillmate::com {
namespace {

struct Kept {
  ComPtr<IUnknown> object;
  MayRelease may_release;

  Kept(ComPtr<IUnknown> kept, MayRelease may) : object(std::move(kept)), may_release(std::move(may)) {}
  Kept(const Kept&) = delete;
  Kept& operator=(const Kept&) = delete;
  ~Kept() {
    // Deliberate: the pointer to a page that hangs is leaked.
    if (may_release && !may_release()) static_cast<void>(object.Detach());
  }
};

using KeptObjects = std::map<ObjectId, Kept>;

// Not destroyed with its thread: threads end under the loader lock, where releasing another process's object
// hangs, and after their apartment.
thread_local KeptObjects* kept_objects = nullptr;
thread_local bool has_run_command = false;
thread_local bool is_apartment_watched = false;

KeptObjects& ThreadObjects() {
  if (kept_objects == nullptr) kept_objects = new KeptObjects;
  return *kept_objects;
}

std::set<ObjectId>& LiveObjects() {
  static std::set<ObjectId>& live = *new std::set<ObjectId>;
  return live;
}

/// Hears on each thread that keeps pointers when the thread is about to leave its apartment: the pointers
/// are dead afterwards.
class ApartmentSpy final : public IInitializeSpy {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = IsEqualIID(iid, __uuidof(IUnknown)) || IsEqualIID(iid, __uuidof(IInitializeSpy));
    *object = known ? static_cast<IInitializeSpy*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  // One object for all threads, which is never destroyed.
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP PreInitialize(DWORD, DWORD) override { return S_OK; }
  STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
  STDMETHODIMP PreUninitialize(DWORD references) override {
    constexpr DWORD kLast = 1;
    if (references == kLast && kept_objects != nullptr) kept_objects->clear();
    return S_OK;
  }
  STDMETHODIMP PostUninitialize(DWORD) override { return S_OK; }

 private:
  virtual ~ApartmentSpy() = default;
};

void WatchApartment() {
  if (is_apartment_watched) return;
  static ApartmentSpy& spy = *new ApartmentSpy;
  KeepLibraryLoaded();
  ULARGE_INTEGER cookie = {};
  is_apartment_watched = SUCCEEDED(CoRegisterInitializeSpy(&spy, &cookie));
}

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

ObjectId NewObjectId() {
  static ObjectId last = 0;
  LiveObjects().insert(++last);
  return last;
}

IUnknown* FindThreadObject(ObjectId id) {
  if (kept_objects == nullptr) return nullptr;
  const auto found = kept_objects->find(id);
  return found != kept_objects->end() ? found->second.object.Get() : nullptr;
}

void KeepThreadObject(ObjectId id, ComPtr<IUnknown> object, MayRelease may_release) {
  WatchApartment();
  ThreadObjects().try_emplace(id, std::move(object), std::move(may_release));
}

void EndThreadObjects(ObjectId id, bool release) {
  LiveObjects().erase(id);
  if (kept_objects == nullptr) return;
  const auto found = kept_objects->find(id);
  if (found == kept_objects->end()) return;
  found->second.may_release = [release] { return release; };
  kept_objects->erase(found);
}

ThreadObjectsScope::ThreadObjectsScope() {
  if (kept_objects == nullptr) return;
  std::erase_if(*kept_objects, [](const auto& entry) { return !LiveObjects().contains(entry.first); });
}

ThreadObjectsScope::~ThreadObjectsScope() {
  const bool is_first = !std::exchange(has_run_command, true);
  if (kept_objects == nullptr) return;
  if (is_first) kept_objects->clear();
  if (kept_objects->empty()) delete std::exchange(kept_objects, nullptr);
}

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
