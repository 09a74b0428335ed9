#include "volume/element_pass.h"

namespace brindle {

std::vector<StiffnessTriplet> ElementTriplets(const prepoisson& model,
                                              const std::vector<std::int32_t>& positions,
                                              double tolerance, std::string& message) {
  std::vector<StiffnessTriplet> triplets;
  triplets.reserve(16 * model.tetrahedra.size());
  ForEachElementMatrix(model, positions, tolerance, nullptr, message,
                       [&](std::size_t, const std::int32_t(&p)[4], const ElementMatrix& k) {
                         for (int i = 0; i < 4; ++i)
                           triplets.emplace_back(p[i], p[i], k[i][i]);
                         for (int i = 0; i < 4; ++i) {
                           for (int j = i + 1; j < 4; ++j) {
                             triplets.emplace_back(p[i], p[j], k[i][j]);
                             triplets.emplace_back(p[j], p[i], k[j][i]);
                           }
                         }
                       });
  return triplets;
}

}  // namespace brindle
