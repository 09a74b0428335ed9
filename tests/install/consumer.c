/* A C program built with the flags pkg-config gives for an installed brindle. */
#include <brindle.h>
#include <stdio.h>

int main(void) {
  int red = 0, green = 0, blue = 0;
  float x = 0, y = 0, z = 0;
  HeatColor(1.0, &red, &green, &blue);
  if (encode_integer_to_sphere(77, &x, &y, &z) != 0) return 1;
  printf("colour %d %d %d, decoded %d\n", red, green, blue, decode_integer_from_sphere(x, y, z));
  return red == 146 && green == 0 && blue == 0 && decode_integer_from_sphere(x, y, z) == 77 ? 0 : 1;
}
