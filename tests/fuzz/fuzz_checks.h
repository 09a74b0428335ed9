// What every harness checks after each call: the status is one the header documents, the
// error text ends inside its 1024 bytes, the caller's input is unchanged, and no exception
// leaves an export except those the header lets through. A violation aborts, which libFuzzer
// reports as a finding with the input that caused it.
#ifndef BRINDLE_TESTS_FUZZ_FUZZ_CHECKS_H
#define BRINDLE_TESTS_FUZZ_FUZZ_CHECKS_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <initializer_list>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "opennurbs.h"

namespace fuzz {

[[noreturn]] inline void Finding(const std::string& what) {
  std::fprintf(stderr, "FINDING: %s\n", what.c_str());
  std::abort();
}

inline void ExpectStatus(const char* function, int status, std::initializer_list<int> documented) {
  if (std::find(documented.begin(), documented.end(), status) == documented.end())
    Finding(std::string(function) + " returned undocumented status " + std::to_string(status));
}

// A caller's error buffer of exactly 1024 bytes on the heap, so that AddressSanitizer sees a
// write past its end, filled with junk so that an unterminated message shows.
class ErrorBuffer {
 public:
  static constexpr std::size_t kSize = 1024;
  ErrorBuffer() : text_(new char[kSize]) { std::memset(text_.get(), 'x', kSize); }
  char* get() { return text_.get(); }
  void Check(const char* function) const {
    if (std::memchr(text_.get(), 0, kSize) == nullptr)
      Finding(std::string(function) + " left its error text unterminated");
  }
  bool Empty() const { return text_[0] == 0; }

 private:
  std::unique_ptr<char[]> text_;
};

// FNV-1a over the bytes of the arrays a caller's mesh hands to the library.
class Digest {
 public:
  void Add(const void* data, std::size_t bytes) {
    const auto* p = static_cast<const std::uint8_t*>(data);
    for (std::size_t i = 0; i < bytes; ++i)
      hash_ = (hash_ ^ p[i]) * 1099511628211ull;
  }
  template <class T>
  void AddArray(const ON_SimpleArray<T>& a) {
    const int count = a.Count();
    Add(&count, sizeof count);
    if (count > 0) Add(a.Array(), sizeof(T) * static_cast<std::size_t>(count));
  }
  std::uint64_t Value() const { return hash_; }

 private:
  std::uint64_t hash_ = 1469598103934665603ull;
};

inline std::uint64_t MeshDigest(const ON_Mesh& mesh) {
  Digest d;
  d.AddArray(mesh.m_dV);
  d.AddArray(mesh.m_V);
  d.AddArray(mesh.m_F);
  d.AddArray(mesh.m_C);
  d.AddArray(mesh.m_N);
  d.AddArray(mesh.m_FN);
  return d.Value();
}

// Guards a const input mesh across calls.
class UnchangedMesh {
 public:
  explicit UnchangedMesh(const ON_Mesh& mesh) : mesh_(mesh), digest_(MeshDigest(mesh)) {}
  void Check(const char* function) const {
    if (MeshDigest(mesh_) != digest_) Finding(std::string(function) + " changed its input mesh");
  }

 private:
  const ON_Mesh& mesh_;
  std::uint64_t digest_;
};

// Which exceptions an export may let out, as its header comment says.
enum class Lets { kNothing, kBadAlloc, kSurfaceErrors };

// Runs `call` and turns any exception the export may not throw into a finding. Returns false
// when a permitted exception left the export.
template <class Call>
bool Guarded(const char* function, Lets lets, Call call) {
  try {
    call();
    return true;
  } catch (const std::bad_alloc&) {
    if (lets == Lets::kBadAlloc) return false;
    Finding(std::string(function) + " let std::bad_alloc out");
  } catch (const std::runtime_error& e) {
    const std::string what = e.what();
    if (lets == Lets::kSurfaceErrors &&
        (what == "Large reduced residual" || what == "r_per_face size must equal face count" ||
         what == "Mesh contains non-tri faces"))
      return false;
    Finding(std::string(function) + " let a runtime error out: " + what);
  } catch (const std::exception& e) {
    Finding(std::string(function) + " let an exception out: " + e.what());
  } catch (...) {
    Finding(std::string(function) + " let an unknown exception out");
  }
}

}  // namespace fuzz

#endif
