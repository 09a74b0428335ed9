#include "opennurbs.h"

// ---------------------------------------------------------------------------------------
// ON_Object

ON_Object::ON_Object() noexcept = default;
ON_Object::~ON_Object() = default;
ON_Object::ON_Object(const ON_Object& src) = default;

ON_Object& ON_Object::operator=(const ON_Object& src) {
  if (this != &src) m_user_strings = src.m_user_strings;
  return *this;
}

bool ON_Object::IsValid(ON_TextLog*) const {
  return true;
}

int ON_Object::FindUserString(const wchar_t* key) const {
  for (size_t i = 0; i < m_user_strings.size(); i++) {
    if (m_user_strings[i].first.CompareOrdinal(key, true) == 0) return static_cast<int>(i);
  }
  return -1;
}

// A matching key keeps its first spelling and position; only its value changes.
bool ON_Object::SetUserString(const wchar_t* key, const wchar_t* string_value) {
  if (key == nullptr || key[0] == 0) return false;
  const int index = FindUserString(key);
  const bool remove = (string_value == nullptr || string_value[0] == 0);
  if (remove) {
    if (index < 0) return false;
    m_user_strings.erase(m_user_strings.begin() + index);
    return true;
  }
  if (index >= 0) {
    m_user_strings[static_cast<size_t>(index)].second = string_value;
  } else {
    m_user_strings.emplace_back(ON_wString(key), ON_wString(string_value));
  }
  return true;
}

bool ON_Object::GetUserString(const wchar_t* key, ON_wString& string_value) const {
  const int index = (key != nullptr && key[0] != 0) ? FindUserString(key) : -1;
  if (index < 0) {
    string_value.Empty();
    return false;
  }
  string_value = m_user_strings[static_cast<size_t>(index)].second;
  return true;
}

int ON_Object::UserStringCount() const {
  return static_cast<int>(m_user_strings.size());
}

void ON_Object::PurgeUserData() {
  m_user_strings.clear();
}

// ---------------------------------------------------------------------------------------
// ON_Geometry

ON_Geometry::ON_Geometry() noexcept = default;
ON_Geometry::~ON_Geometry() = default;
ON_Geometry::ON_Geometry(const ON_Geometry& src) = default;
ON_Geometry& ON_Geometry::operator=(const ON_Geometry& src) = default;

ON_BoundingBox ON_Geometry::BoundingBox() const {
  ON_BoundingBox box;
  if (!GetBBox(&box.m_min.x, &box.m_max.x, false)) box = ON_BoundingBox::EmptyBoundingBox;
  return box;
}

bool ON_Geometry::GetBBox(double*, double*, bool) const {
  return false;
}
