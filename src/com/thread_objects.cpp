// Each thread's pointers, and the spy that drops them before the thread leaves its apartment.
#include "com/thread_objects.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

#include "com/library_lifetime.h"

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

struct Parked {
  ComPtr<IUnknown> object;
  std::shared_ptr<std::atomic<bool>> worker_ended;
};

struct ThreadState {
  std::map<ObjectId, Kept> kept;
  std::vector<Parked> parked;
};

// Not destroyed with its thread: threads end under the loader lock, where releasing another process's object
// hangs, and after their apartment.
thread_local ThreadState* thread_state = nullptr;
thread_local bool has_run_command = false;
thread_local bool is_apartment_watched = false;

ThreadState& State() {
  if (thread_state == nullptr) thread_state = new ThreadState;
  return *thread_state;
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
    if (references == kLast && thread_state != nullptr) DropAll(*thread_state);
    return S_OK;
  }
  STDMETHODIMP PostUninitialize(DWORD) override { return S_OK; }

 private:
  virtual ~ApartmentSpy() = default;

  static void DropAll(ThreadState& state) {
    state.kept.clear();
    for (Parked& parked : state.parked) static_cast<void>(parked.object.Detach());
    state.parked.clear();
  }
};

void WatchApartment() {
  if (is_apartment_watched) return;
  static ApartmentSpy& spy = *new ApartmentSpy;
  KeepLibraryLoaded();
  ULARGE_INTEGER cookie = {};
  is_apartment_watched = SUCCEEDED(CoRegisterInitializeSpy(&spy, &cookie));
}

void ReleaseParked(ThreadState& state) {
  std::erase_if(state.parked, [](const Parked& parked) { return parked.worker_ended->load(); });
}

}  // namespace

ObjectId NewObjectId() {
  static ObjectId last = 0;
  LiveObjects().insert(++last);
  return last;
}

IUnknown* FindThreadObject(ObjectId id) {
  if (thread_state == nullptr) return nullptr;
  const auto found = thread_state->kept.find(id);
  return found != thread_state->kept.end() ? found->second.object.Get() : nullptr;
}

void KeepThreadObject(ObjectId id, ComPtr<IUnknown> object, MayRelease may_release) {
  WatchApartment();
  State().kept.try_emplace(id, std::move(object), std::move(may_release));
}

void EndThreadObjects(ObjectId id, bool release) {
  LiveObjects().erase(id);
  if (thread_state == nullptr) return;
  const auto found = thread_state->kept.find(id);
  if (found == thread_state->kept.end()) return;
  found->second.may_release = [release] { return release; };
  thread_state->kept.erase(found);
}

void ParkThreadObject(ComPtr<IUnknown> object, std::shared_ptr<std::atomic<bool>> worker_ended) {
  WatchApartment();
  State().parked.push_back({std::move(object), std::move(worker_ended)});
}

ThreadObjectsScope::ThreadObjectsScope() {
  if (thread_state == nullptr) return;
  ReleaseParked(*thread_state);
  std::erase_if(thread_state->kept, [](const auto& entry) { return !LiveObjects().contains(entry.first); });
}

ThreadObjectsScope::~ThreadObjectsScope() {
  const bool is_first = !std::exchange(has_run_command, true);
  if (thread_state == nullptr) return;
  if (is_first) thread_state->kept.clear();
  if (thread_state->kept.empty() && thread_state->parked.empty()) delete std::exchange(thread_state, nullptr);
}

}  // namespace quillmate::com
