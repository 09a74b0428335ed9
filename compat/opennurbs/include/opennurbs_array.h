#ifndef BRINDLE_COMPAT_OPENNURBS_ARRAY_H
#define BRINDLE_COMPAT_OPENNURBS_ARRAY_H

// Dynamic array for trivially copyable element types. Elements are moved with memcpy and
// fresh storage is zero-filled; memory comes from onrealloc/onfree so that a buffer taken
// with KeepArray() can be released by any code that links the same allocator.

#include <cstring>

#include "opennurbs_defines.h"

template <class T>
class ON_SimpleArray {
 public:
  ON_SimpleArray() noexcept : m_a(nullptr), m_count(0), m_capacity(0) {}
  ON_SimpleArray(size_t initial_capacity) : m_a(nullptr), m_count(0), m_capacity(0) {
    if (initial_capacity > 0) SetCapacity(initial_capacity);
  }
  virtual ~ON_SimpleArray() { SetCapacity(0); }

  ON_SimpleArray(const ON_SimpleArray<T>& src) : m_a(nullptr), m_count(0), m_capacity(0) {
    *this = src;
  }
  // Copies only the source's count; the capacity grows to exactly that count when needed.
  ON_SimpleArray<T>& operator=(const ON_SimpleArray<T>& src) {
    if (this == &src) return *this;
    if (src.m_count <= 0) {
      m_count = 0;
      return *this;
    }
    if (m_capacity < src.m_count) SetCapacity(static_cast<size_t>(src.m_count));
    if (m_a != nullptr) {
      std::memcpy(static_cast<void*>(m_a), src.m_a, sizeof(T) * static_cast<size_t>(src.m_count));
      m_count = src.m_count;
    }
    return *this;
  }
  ON_SimpleArray(ON_SimpleArray<T>&& src) noexcept
      : m_a(src.m_a), m_count(src.m_count), m_capacity(src.m_capacity) {
    src.m_a = nullptr;
    src.m_count = 0;
    src.m_capacity = 0;
  }
  ON_SimpleArray<T>& operator=(ON_SimpleArray<T>&& src) noexcept {
    if (this != &src) {
      Destroy();
      m_a = src.m_a;
      m_count = src.m_count;
      m_capacity = src.m_capacity;
      src.m_a = nullptr;
      src.m_count = 0;
      src.m_capacity = 0;
    }
    return *this;
  }

  int Count() const { return m_count; }
  unsigned int UnsignedCount() const {
    return m_count > 0 ? static_cast<unsigned int>(m_count) : 0U;
  }
  int Capacity() const { return m_capacity; }

  // No bounds checks, as in any raw array.
  T& operator[](int i) { return m_a[i]; }
  T& operator[](unsigned int i) { return m_a[i]; }
  T& operator[](ON__INT64 i) { return m_a[i]; }
  T& operator[](ON__UINT64 i) { return m_a[i]; }
  const T& operator[](int i) const { return m_a[i]; }
  const T& operator[](unsigned int i) const { return m_a[i]; }
  const T& operator[](ON__INT64 i) const { return m_a[i]; }
  const T& operator[](ON__UINT64 i) const { return m_a[i]; }

  // The conversions give null for an empty array; Array() gives the buffer regardless.
  operator T*() { return m_count > 0 ? m_a : nullptr; }
  operator const T*() const { return m_count > 0 ? m_a : nullptr; }
  T* Array() { return m_a; }
  const T* Array() const { return m_a; }

  T* First() { return m_count > 0 ? m_a : nullptr; }
  const T* First() const { return m_count > 0 ? m_a : nullptr; }
  T* Last() { return m_count > 0 ? m_a + (m_count - 1) : nullptr; }
  const T* Last() const { return m_count > 0 ? m_a + (m_count - 1) : nullptr; }
  T* At(int i) { return (i >= 0 && i < m_count) ? m_a + i : nullptr; }
  const T* At(int i) const { return (i >= 0 && i < m_count) ? m_a + i : nullptr; }

  T& AppendNew() {
    if (m_count == m_capacity) Reserve(static_cast<size_t>(NewCapacity()));
    std::memset(static_cast<void*>(m_a + m_count), 0, sizeof(T));
    return m_a[m_count++];
  }

  // A failed growth leaves the array empty (see SetCapacity) and drops x. The other appending
  // functions do not check, so callers that may run out of memory reserve and check first.
  void Append(const T& x) {
    if (m_count == m_capacity) {
      const int new_capacity = NewCapacity();
      if (m_a != nullptr && &x >= m_a && &x < m_a + m_capacity) {
        // x lives inside this buffer, which the reallocation may move.
        T temp;
        std::memcpy(static_cast<void*>(&temp), &x, sizeof(T));
        Reserve(static_cast<size_t>(new_capacity));
        if (m_a == nullptr) return;  // allocation failure: the element is dropped
        std::memcpy(static_cast<void*>(m_a + m_count++), &temp, sizeof(T));
        return;
      }
      Reserve(static_cast<size_t>(new_capacity));
      if (m_a == nullptr) return;  // allocation failure: the element is dropped
    }
    std::memcpy(static_cast<void*>(m_a + m_count++), &x, sizeof(T));
  }

  void Append(int count, const T* buffer) {
    if (count <= 0 || buffer == nullptr) return;
    if (m_count + count > m_capacity) {
      int new_capacity = NewCapacity();
      if (new_capacity < m_count + count) new_capacity = m_count + count;
      if (m_a != nullptr && buffer + count > m_a && buffer < m_a + m_capacity) {
        const size_t bytes = sizeof(T) * static_cast<size_t>(count);
        void* temp = onmalloc(bytes);
        std::memcpy(temp, buffer, bytes);
        Reserve(static_cast<size_t>(new_capacity));
        std::memcpy(static_cast<void*>(m_a + m_count), temp, bytes);
        onfree(temp);
        m_count += count;
        return;
      }
      Reserve(static_cast<size_t>(new_capacity));
    }
    std::memcpy(static_cast<void*>(m_a + m_count), buffer, sizeof(T) * static_cast<size_t>(count));
    m_count += count;
  }

  void Insert(int i, const T& x) {
    if (i < 0 || i > m_count) return;
    T temp;
    std::memcpy(static_cast<void*>(&temp), &x, sizeof(T));
    if (m_count == m_capacity) Reserve(static_cast<size_t>(NewCapacity()));
    std::memmove(static_cast<void*>(m_a + i + 1), m_a + i,
                 sizeof(T) * static_cast<size_t>(m_count - i));
    std::memcpy(static_cast<void*>(m_a + i), &temp, sizeof(T));
    m_count++;
  }

  void Remove() { Remove(m_count - 1); }
  virtual void Remove(int i) {
    if (i < 0 || i >= m_count) return;
    std::memmove(static_cast<void*>(m_a + i), m_a + i + 1,
                 sizeof(T) * static_cast<size_t>(m_count - 1 - i));
    m_count--;
    std::memset(static_cast<void*>(m_a + m_count), 0, sizeof(T));
  }

  // Keeps the buffer, but wipes all of it.
  void Empty() {
    if (m_a != nullptr)
      std::memset(static_cast<void*>(m_a), 0, sizeof(T) * static_cast<size_t>(m_capacity));
    m_count = 0;
  }
  void Zero() {
    if (m_a != nullptr)
      std::memset(static_cast<void*>(m_a), 0, sizeof(T) * static_cast<size_t>(m_capacity));
  }

  // Grows to exactly new_capacity when smaller; never shrinks.
  T* Reserve(size_t new_capacity) {
    if (static_cast<size_t>(m_capacity) < new_capacity) SetCapacity(new_capacity);
    return m_a;
  }

  T* SetCapacity(size_t new_capacity) {
    int capacity =
        (new_capacity > 0 && new_capacity < 0xFFFFFFFFU) ? static_cast<int>(new_capacity) : 0;
    if (capacity == m_capacity) return m_a;
    if (capacity > 0) {
      if (m_count > capacity) m_count = capacity;
      m_a = Realloc(m_a, capacity);
      if (m_a == nullptr) {
        m_count = 0;
        m_capacity = 0;
        return nullptr;
      }
      if (capacity > m_capacity) {
        std::memset(static_cast<void*>(m_a + m_capacity), 0,
                    sizeof(T) * static_cast<size_t>(capacity - m_capacity));
      }
      m_capacity = capacity;
    } else {
      Realloc(m_a, 0);
      m_a = nullptr;
      m_count = 0;
      m_capacity = 0;
    }
    return m_a;
  }

  // Only counts within the current capacity are accepted; anything else is ignored.
  void SetCount(int count) {
    if (count >= 0 && count <= m_capacity) m_count = count;
  }
  void Shrink() { SetCapacity(static_cast<size_t>(m_count)); }
  void Destroy() { SetCapacity(0); }

  // Doubling up to a large byte size, then linear steps so huge arrays do not overshoot.
  int NewCapacity() const {
    const size_t cap_size = 32 * sizeof(void*) * 1024 * 1024;
    if (static_cast<size_t>(m_count) * sizeof(T) <= cap_size || m_count < 8)
      return (m_count <= 2) ? 4 : 2 * m_count;
    int delta = 8 + static_cast<int>(cap_size / sizeof(T));
    if (delta > m_count) delta = m_count;
    return m_count + delta;
  }

  // Hands the buffer to the caller (release it with onfree) and leaves this array empty.
  T* KeepArray() {
    T* p = m_a;
    m_a = nullptr;
    m_count = 0;
    m_capacity = 0;
    return p;
  }

  virtual T* Realloc(T* ptr, int capacity) {
    return static_cast<T*>(onrealloc(ptr, static_cast<size_t>(capacity) * sizeof(T)));
  }

 protected:
  T* m_a;
  int m_count;
  int m_capacity;
};

#endif
