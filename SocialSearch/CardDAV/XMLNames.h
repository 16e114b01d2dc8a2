#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The names of the elements that are open, with what their prefixes stand for: "D:" for WebDAV, "C:" for CardDAV and
/// "?:" for everything else, so that a server may call its prefixes as it likes (Namespaces in XML 1.0).
class XMLNames {
  public:
    /// False when elements or prefixes pile up beyond what any server writes.
    bool open(const std::string& name, const std::map<std::string, std::string>& attributes);
    void close();

    std::size_t depth() const { return mPath.size(); }
    /// The name of the innermost element, of the one around it, and so on; empty beyond the outermost.
    std::string_view inner(std::size_t steps = 0) const;

  private:
    struct Binding {
        std::string prefix;
        char mark;
        std::size_t depth;
    };
    void bind(const std::string& attribute, const std::string& value);
    char markOf(std::string_view prefix) const;

    std::vector<Binding> mBindings;
    std::vector<std::string> mPath;
};
