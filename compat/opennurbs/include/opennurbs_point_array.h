#ifndef BRINDLE_COMPAT_OPENNURBS_POINT_ARRAY_H
#define BRINDLE_COMPAT_OPENNURBS_POINT_ARRAY_H

// The typed point and vector arrays a mesh stores its per-vertex and per-face data in.

#include "opennurbs_array.h"
#include "opennurbs_point.h"

class ON_CLASS ON_3dPointArray : public ON_SimpleArray<ON_3dPoint> {
 public:
  ON_3dPointArray();
  ON_3dPointArray(int initial_capacity);
  ON_3dPointArray(const ON_SimpleArray<ON_3dPoint>& src);
  ON_3dPointArray(const ON_SimpleArray<ON_3fPoint>& src);
  ON_3dPointArray& operator=(const ON_3dPointArray& src);
  ON_3dPointArray& operator=(const ON_SimpleArray<ON_3fPoint>& src);
};

class ON_CLASS ON_3fPointArray : public ON_SimpleArray<ON_3fPoint> {
 public:
  ON_3fPointArray();
  ON_3fPointArray(int initial_capacity);
  ON_3fPointArray(const ON_3fPointArray& src);
  ON_3fPointArray& operator=(const ON_3fPointArray& src);
};

class ON_CLASS ON_3fVectorArray : public ON_SimpleArray<ON_3fVector> {
 public:
  ON_3fVectorArray();
  ON_3fVectorArray(int initial_capacity);
  ON_3fVectorArray(const ON_3fVectorArray& src);
  ON_3fVectorArray& operator=(const ON_3fVectorArray& src);
};

class ON_CLASS ON_2fPointArray : public ON_SimpleArray<ON_2fPoint> {
 public:
  ON_2fPointArray();
  ON_2fPointArray(int initial_capacity);
  ON_2fPointArray(const ON_2fPointArray& src);
  ON_2fPointArray& operator=(const ON_2fPointArray& src);
};

class ON_CLASS ON_2dPointArray : public ON_SimpleArray<ON_2dPoint> {
 public:
  ON_2dPointArray();
  ON_2dPointArray(int initial_capacity);
  ON_2dPointArray(const ON_2dPointArray& src);
  ON_2dPointArray& operator=(const ON_2dPointArray& src);
};

#endif
