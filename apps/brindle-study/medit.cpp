#include "medit.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace brindle::study {
namespace {

// Largest element count accepted; protects against absurd counts in damaged files.
constexpr long kMaxCount = 100000000;

class Tokens {
 public:
  Tokens(const std::string& text, const std::string& source) : text_(text), source_(source) {}

  // Next whitespace-separated token, or false at the end of the text.
  bool Next(std::string& token) {
    Skip();
    if (pos_ >= text_.size()) return false;
    tokenLine_ = line_;
    const std::size_t start = pos_;
    while (pos_ < text_.size() && !std::isspace(static_cast<unsigned char>(text_[pos_])) &&
           text_[pos_] != '#')
      ++pos_;
    token.assign(text_, start, pos_ - start);
    return true;
  }

  std::string Expect(const char* what) {
    std::string token;
    if (!Next(token)) Fail(std::string("unexpected end of file, expected ") + what);
    return token;
  }

  long Integer(const char* what) {
    const std::string token = Expect(what);
    errno = 0;
    char* end = nullptr;
    const long value = std::strtol(token.c_str(), &end, 10);
    if (end == token.c_str() || *end != '\0' || errno == ERANGE)
      Fail("expected " + std::string(what) + ", found '" + token + "'");
    return value;
  }

  double Real(const char* what) {
    const std::string token = Expect(what);
    errno = 0;
    char* end = nullptr;
    const double value = std::strtod(token.c_str(), &end);
    if (end == token.c_str() || *end != '\0' || !std::isfinite(value))
      Fail("expected " + std::string(what) + ", found '" + token + "'");
    return value;
  }

  [[noreturn]] void Fail(const std::string& problem) const { Fail(problem, tokenLine_); }
  [[noreturn]] void Fail(const std::string& problem, int line) const {
    throw MeditError(source_ + ":" + std::to_string(line) + ": " + problem, line);
  }

 private:
  void Skip() {
    while (pos_ < text_.size()) {
      const char c = text_[pos_];
      if (c == '\n') {
        ++line_;
        ++pos_;
      } else if (c == '#') {
        while (pos_ < text_.size() && text_[pos_] != '\n')
          ++pos_;
      } else if (std::isspace(static_cast<unsigned char>(c))) {
        ++pos_;
      } else {
        return;
      }
    }
  }

  const std::string& text_;
  const std::string& source_;
  std::size_t pos_ = 0;
  int line_ = 1;
  int tokenLine_ = 1;
};

std::string Lower(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return s;
}

long Count(Tokens& tokens, const std::string& keyword) {
  const long count = tokens.Integer("an element count");
  if (count < 0 || count > kMaxCount)
    tokens.Fail("invalid count " + std::to_string(count) + " for " + keyword);
  return count;
}

// Reads `corners` 1-based vertex indices and a reference number per element.
template <std::size_t N>
void ReadElements(Tokens& tokens, const std::string& keyword, const MeditMesh& mesh,
                  std::vector<std::array<int, N>>& elements, std::vector<int>& refs) {
  const long count = Count(tokens, keyword);
  for (long e = 0; e < count; ++e) {
    std::array<int, N> element;
    for (std::size_t c = 0; c < N; ++c) {
      const long index = tokens.Integer("a vertex index");
      if (index < 1 || index > static_cast<long>(mesh.vertices.size()))
        tokens.Fail("vertex index " + std::to_string(index) + " out of range 1.." +
                    std::to_string(mesh.vertices.size()) + " in " + keyword);
      element[c] = static_cast<int>(index - 1);
    }
    elements.push_back(element);
    refs.push_back(static_cast<int>(tokens.Integer("a reference number")));
  }
}

// Reads and drops `count` records of `integers` integers and `reals` reals each; returns count.
long SkipRecords(Tokens& tokens, const std::string& keyword, int integers, int reals) {
  const long count = Count(tokens, keyword);
  for (long e = 0; e < count; ++e) {
    for (int i = 0; i < integers; ++i)
      tokens.Integer("an integer");
    for (int i = 0; i < reals; ++i)
      tokens.Real("a real number");
  }
  return count;
}

}  // namespace

MeditMesh ParseMedit(const std::string& text, const std::string& source) {
  Tokens tokens(text, source);
  MeditMesh mesh;
  std::string token;
  bool sawVersion = false;
  while (tokens.Next(token)) {
    const std::string keyword = Lower(token);
    if (keyword == "end") break;
    if (keyword == "meshversionformatted") {
      const long version = tokens.Integer("a format version");
      if (version < 1 || version > 4) tokens.Fail("unsupported format version");
      sawVersion = true;
    } else if (keyword == "dimension") {
      const long dimension = tokens.Integer("the dimension");
      if (dimension != 2 && dimension != 3) tokens.Fail("dimension must be 2 or 3");
      mesh.dimension = static_cast<int>(dimension);
    } else if (keyword == "vertices") {
      if (mesh.dimension == 0) tokens.Fail("Vertices before Dimension");
      const long count = Count(tokens, token);
      for (long v = 0; v < count; ++v) {
        Point p{0.0, 0.0, 0.0};
        for (int a = 0; a < mesh.dimension; ++a)
          p[a] = tokens.Real("a coordinate");
        mesh.vertices.push_back(p);
        mesh.vertexRef.push_back(static_cast<int>(tokens.Integer("a reference number")));
      }
    } else if (keyword == "edges") {
      ReadElements(tokens, token, mesh, mesh.edges, mesh.edgeRef);
    } else if (keyword == "triangles") {
      ReadElements(tokens, token, mesh, mesh.triangles, mesh.triangleRef);
    } else if (keyword == "tetrahedra") {
      ReadElements(tokens, token, mesh, mesh.tetrahedra, mesh.tetrahedronRef);
    } else if (keyword == "quadrilaterals") {
      mesh.quadrilateralCount += SkipRecords(tokens, token, 5, 0);
    } else if (keyword == "hexahedra") {
      mesh.hexahedronCount += SkipRecords(tokens, token, 9, 0);
    } else if (keyword == "prisms") {
      mesh.prismCount += SkipRecords(tokens, token, 7, 0);
    } else if (keyword == "corners" || keyword == "ridges" || keyword == "requiredvertices" ||
               keyword == "requirededges" || keyword == "requiredtriangles") {
      SkipRecords(tokens, token, 1, 0);
    } else if (keyword == "normals" || keyword == "tangents") {
      SkipRecords(tokens, token, 0, mesh.dimension > 0 ? mesh.dimension : 3);
    } else if (keyword == "normalatvertices" || keyword == "tangentatvertices") {
      SkipRecords(tokens, token, 2, 0);
    } else {
      tokens.Fail("unknown keyword '" + token + "'");
    }
  }
  if (!sawVersion && mesh.dimension == 0) tokens.Fail("not a MEDIT mesh (no Dimension)", 1);
  if (mesh.vertices.empty()) tokens.Fail("the mesh has no vertices", 1);
  return mesh;
}

namespace {

int VertexReference(VertexKind kind, bool onSurface) {
  if (kind == VertexKind::Cold) return 1;
  if (kind == VertexKind::Warm) return 2;
  return onSurface ? 3 : 0;
}

template <class Mesh, class Elements>
std::string Text(const Mesh& mesh, const char* keyword, const Elements& elements) {
  std::ostringstream out;
  out.precision(17);
  out << "MeshVersionFormatted 2\nDimension 3\n\nVertices\n" << mesh.points.size() << '\n';
  for (std::size_t v = 0; v < mesh.points.size(); ++v) {
    const Point& p = mesh.points[v];
    out << p[0] << ' ' << p[1] << ' ' << p[2] << ' '
        << VertexReference(mesh.kind[v], mesh.onSurface[v]) << '\n';
  }
  out << '\n' << keyword << '\n' << elements.size() << '\n';
  for (std::size_t e = 0; e < elements.size(); ++e) {
    for (int v : elements[e])
      out << v + 1 << ' ';
    out << mesh.region[e] + 1 << '\n';
  }
  out << "\nEnd\n";
  return out.str();
}

}  // namespace

std::string MeditText(const TriMesh& mesh) {
  return Text(mesh, "Triangles", mesh.triangles);
}
std::string MeditText(const TetMesh& mesh) {
  return Text(mesh, "Tetrahedra", mesh.tetrahedra);
}

std::string MeditStudyArguments(const std::vector<Material>& materials) {
  std::ostringstream out;
  out.precision(10);
  for (std::size_t m = 0; m < materials.size(); ++m)
    out << "--conductivity " << m + 1 << '=' << materials[m].conductivity << ' ';
  out << "--low 1 --high 2 --surface 3";
  return out.str();
}

void WriteMedit(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
  if (!out) throw std::runtime_error("cannot write " + path);
}

MeditMesh ReadMedit(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw MeditError(path + ":0: cannot open the file", 0);
  std::ostringstream text;
  text << in.rdbuf();
  return ParseMedit(text.str(), path);
}

}  // namespace brindle::study
