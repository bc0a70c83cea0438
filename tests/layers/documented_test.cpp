// The public declarations of the headers: each says what it is for.
//
// A comment documents what stands below it up to the next empty line, and what stands before it on its line.
// No comment of their own need constructors and destructors, operators, overrides, which inherit that of the
// interface, and the data of a struct that has one. What belongs to what is read off the indentation, on
// which the formatter insists.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace veltrix {
namespace {

const std::regex CommentBehind(R"( *//.*)");
const std::regex Exempt(
    R"((friend|namespace|using namespace|using \w+::\w+;|extern|class \w+;|struct \w+;|[})]).*|)"
    R"(.*(\boverride\b|= delete|= default|\boperator\b).*)");
const std::regex TypeHead(R"((template <.*> )?(class|struct|enum class|enum) ([\w:]*)[^(]*\{)");
const std::regex InnerBrackets("<[^<>]*>");

/// The inside of a type, or the file outside of all types.
struct Scope {
    std::size_t indent = 0;    ///< of what is declared in it
    std::string type;          ///< its name
    bool isPublic = true;      ///< what is declared here is for others to use
    bool isDescribed = false;  ///< a struct that has a comment
};

bool IsData(const std::string& declaration) {
    std::string plain = declaration;
    while (std::regex_search(plain, InnerBrackets)) plain = std::regex_replace(plain, InnerBrackets, "");
    return !plain.starts_with("static constexpr") &&
           plain.substr(0, plain.find_first_of("={;")).find('(') == std::string::npos;
}

bool NeedsComment(const std::string& declaration, const Scope& scope) {
    if (!scope.isPublic || std::regex_match(declaration, Exempt)) return false;
    if (scope.isDescribed && IsData(declaration)) return false;
    return scope.type.empty() ||
           !std::regex_match(declaration, std::regex("(explicit |constexpr )*~?" + scope.type + R"(\(.*)"));
}

/// The numbers of the lines on which a header declares what it does not describe.
std::vector<int> Undescribed(std::istream&& header) {
    std::vector<int> found;
    std::vector<Scope> scopes{{}};
    std::string declaration;  // that of the present line, as far as it was read
    bool isCommented = false;
    int start = 0, number = 0;
    for (std::string line; std::getline(header, line);) {
        ++number;
        const std::size_t indent = line.find_first_not_of(' ');
        if (indent == std::string::npos) isCommented = false;
        if (indent == std::string::npos || line[indent] == '#') continue;
        if (declaration.empty()) {
            while (indent + 2 < scopes.back().indent) scopes.pop_back();
            if (line.ends_with("public:")) scopes.back().isPublic = true;
            if (line.ends_with("protected:") || line.ends_with("private:")) scopes.back().isPublic = false;
            if (line.ends_with(':')) isCommented = false;
            if (indent != scopes.back().indent) continue;
            if (line.find("//") != std::string::npos) isCommented = true;
            if (line.compare(indent, 2, "//") == 0) continue;
            start = number;
        }
        isCommented = isCommented || line.find("//") != std::string::npos;
        declaration +=
            (declaration.empty() ? "" : " ") + std::regex_replace(line.substr(indent), CommentBehind, "");
        if (declaration.find_last_of(";{}") != declaration.size() - 1) continue;
        const Scope scope = scopes.back();
        if (!isCommented && NeedsComment(declaration, scope)) found.push_back(start);
        std::smatch head;
        if (std::regex_match(declaration, head, TypeHead)) {
            const bool isStruct = head[2] == "struct";
            scopes.push_back({indent + 4, head[3], scope.isPublic && isStruct, isStruct && isCommented});
            isCommented = false;
        }
        declaration.clear();
    }
    return found;
}

TEST(Documented, EveryPublicDeclarationIsDescribed) {
    const std::filesystem::path tree(VELTRIX_SOURCE_DIR);
    int files = 0;
    for (const char* const part : {"src", "apps"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(tree / part)) {
            if (entry.path().extension() != ".h") continue;
            ++files;
            for (const int line : Undescribed(std::ifstream(entry.path())))
                ADD_FAILURE() << entry.path().string() << ':' << line << ": says not what it is for";
        }
    EXPECT_GT(files, 50) << "the check has not found the tree";
    const char* const sample =
        "class A {\n"
        "  public:\n"
        "    A();\n"
        "    void B() override;\n"
        "    void C(std::size_t first,\n"
        "           std::size_t second);\n"
        "\n"
        "    /// Of both.\n"
        "    void D();\n"
        "    void E();\n"
        "\n"
        "    void F();\n"
        "\n"
        "  private:\n"
        "    void G();\n"
        "};\n"
        "\n"
        "/// Of its data.\n"
        "struct H {\n"
        "    std::function<int()> i;\n"
        "    int J();\n"
        "};\n";
    EXPECT_EQ(Undescribed(std::istringstream(sample)), (std::vector<int>{1, 5, 12, 21}));
}

}  // namespace
}  // namespace veltrix
