// Holds the source tree to its layer table: no toolkit or GL header in the
// core, no include that points to a lower layer, and no include cycle between
// folders. Usage: layer_check ROOT; exit status 1 with one line per fault.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

// A unit is a folder: the view's state and camera (src/view) are data, their
// drawing in GL (src/draw) a layer of its own above the core.
struct Unit {
  std::string name;
  int layer;
};

constexpr int kTools = 100; // may use every layer but view drawing and the shell

std::optional<Unit> UnitOf(const std::string& path) { // path relative to ROOT
  static const std::vector<std::pair<std::string, Unit>> table = {
      {"src/common/", {"common", 0}},   {"src/model/", {"model", 1}},
      {"src/editing/", {"editing", 1}}, {"src/view/", {"view", 1}},
      {"src/mesh/", {"mesh", 2}},       {"src/analysis/", {"analysis", 2}},
      {"src/reports/", {"reports", 2}}, {"src/session/", {"session", 3}},
      {"src/forms/", {"forms", 4}},     {"src/draw/", {"view-drawing", 5}},
      {"src/shell/", {"shell", 6}},     {"tools/", {"tools", kTools}}};
  for (const auto& [prefix, unit] : table)
    if (path.starts_with(prefix)) return unit;
  return std::nullopt;
}

bool IsCore(const Unit& u) {
  return u.layer <= 4;
}

bool Allowed(const Unit& from, const Unit& to) {
  if (from.layer == kTools) return to.layer != 5 && to.layer != 6;
  return to.layer <= from.layer;
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: layer_check ROOT\n";
    return 2;
  }
  const fs::path root = argv[1];
  const std::regex quoted(R"(^\s*#\s*include\s*"([^"]+)\")");
  const std::regex toolkit(R"(^\s*#\s*include\s*<(Q|GL/|GLES))");
  std::vector<std::string> faults;
  std::map<std::string, std::set<std::string>> edges; // unit -> units it includes
  std::map<std::string, std::string> witness;         // "a>b" -> a file and line that does it
  long files = 0;

  for (const char* top : {"src", "tools"}) {
    if (!fs::exists(root / top)) continue;
    for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
      const auto ext = entry.path().extension();
      if (!entry.is_regular_file() || (ext != ".h" && ext != ".cpp")) continue;
      const std::string rel = fs::relative(entry.path(), root).generic_string();
      const auto from = UnitOf(rel);
      if (!from) continue;
      ++files;
      std::ifstream in(entry.path());
      std::string line;
      for (int number = 1; std::getline(in, line); ++number) {
        const std::string where = rel + ":" + std::to_string(number);
        if (IsCore(*from) && std::regex_search(line, toolkit))
          faults.push_back(where + ": toolkit or GL header in the core: " + line);
        std::smatch m;
        if (!std::regex_search(line, m, quoted)) continue;
        // Includes name a path under src; a bare name is a neighbour in the same folder.
        const std::string target = m[1].str();
        const auto to = UnitOf("src/" + target);
        if (!to) continue;
        if (!Allowed(*from, *to))
          faults.push_back(where + ": " + from->name + " includes " + target +
                           " of the lower layer " + to->name);
        if (from->name != to->name) {
          edges[from->name].insert(to->name);
          witness.emplace(from->name + ">" + to->name, where);
        }
      }
    }
  }

  // Cycles between units, by depth-first search; each is told once, at the
  // edge that closes it.
  std::map<std::string, int> state; // 0 new, 1 on the path, 2 done
  std::vector<std::string> path;
  std::function<void(const std::string&)> visit = [&](const std::string& u) {
    state[u] = 1;
    path.push_back(u);
    for (const auto& v : edges[u]) {
      if (state[v] == 1) {
        std::string cycle;
        for (auto it = std::find(path.begin(), path.end(), v); it != path.end(); ++it)
          cycle += *it + " -> ";
        faults.push_back("include cycle: " + cycle + v + " (closed at " + witness[u + ">" + v] +
                         ")");
      } else if (state[v] == 0) {
        visit(v);
      }
    }
    path.pop_back();
    state[u] = 2;
  };
  for (const auto& [u, _] : edges)
    if (state[u] == 0) visit(u);

  for (const auto& f : faults)
    std::cerr << f << '\n';
  if (!faults.empty()) return 1;
  std::cout << files << " files: the layers hold\n";
  return 0;
}
