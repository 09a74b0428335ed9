#ifndef BRINDLE_COMPAT_OPENNURBS_OBJECT_H
#define BRINDLE_COMPAT_OPENNURBS_OBJECT_H

#include "opennurbs_defines.h"

// Base classes: every object can carry key/value user strings; geometry has a bounding box.

#include <utility>
#include <vector>

#include "opennurbs_bounding_box.h"
#include "opennurbs_string.h"

class ON_TextLog;

class ON_CLASS ON_Object {
 public:
  ON_Object() noexcept;
  virtual ~ON_Object();
  // Copies carry the user strings along.
  ON_Object(const ON_Object& src);
  ON_Object& operator=(const ON_Object& src);

  virtual bool IsValid(class ON_TextLog* text_log = nullptr) const;

  // Keys match ignoring ASCII case; an empty or null value removes the key.
  bool SetUserString(const wchar_t* key, const wchar_t* string_value);
  bool GetUserString(const wchar_t* key, ON_wString& string_value) const;
  int UserStringCount() const;

  // Removes everything attached to the object, user strings included.
  void PurgeUserData();

 private:
  int FindUserString(const wchar_t* key) const;

  std::vector<std::pair<ON_wString, ON_wString>> m_user_strings;
};

class ON_CLASS ON_Geometry : public ON_Object {
 public:
  ON_Geometry() noexcept;
  ~ON_Geometry() override;
  ON_Geometry(const ON_Geometry& src);
  ON_Geometry& operator=(const ON_Geometry& src);

  // The box from GetBBox(), or the empty box when there is none.
  ON_BoundingBox BoundingBox() const;
  virtual bool GetBBox(double* boxmin, double* boxmax, bool bGrowBox = false) const;
};

#endif
