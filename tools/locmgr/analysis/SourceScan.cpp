#include "SourceScan.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

namespace locmgr::analysis {

namespace {

bool IsNameStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool IsNameCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool IsRequestFunction(const std::string& name) {
    return name == "Get" || name == "GetUtf16" || name == "GetString";
}

class Scanner {
  public:
    explicit Scanner(const std::string& text) : text_(text) {}

    SourceScan Run() {
        while (at_ < text_.size()) {
            const char c = text_[at_];
            if (c == '\n') {
                ++line_;
                ++at_;
            } else if (StartsWith("//")) {
                SkipTo("\n", false);
            } else if (StartsWith("/*")) {
                at_ += 2;
                SkipTo("*/", true);
            } else if (c == '"') {
                Literal();
            } else if (c == '\'') {
                CharacterLiteral();
            } else if (IsNameStart(c)) {
                Name();
            } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
                // A number, with its digit separators ('), suffixes and exponents.
                while (at_ < text_.size() &&
                       (IsNameCharacter(text_[at_]) || text_[at_] == '\'' || text_[at_] == '.')) {
                    ++at_;
                }
                Significant("0");
            } else {
                if (std::isspace(static_cast<unsigned char>(c)) == 0) {
                    Significant(std::string(1, c));
                }
                ++at_;
            }
        }
        return std::move(scan_);
    }

  private:
    bool StartsWith(const char* prefix) const {
        return text_.compare(at_, std::char_traits<char>::length(prefix), prefix) == 0;
    }

    void SkipTo(const std::string& end, bool pastEnd) {
        const std::size_t found = text_.find(end, at_);
        const std::size_t stop = found == std::string::npos ? text_.size() : found;
        for (; at_ < stop; ++at_) {
            line_ += text_[at_] == '\n' ? 1 : 0;
        }
        if (pastEnd && found != std::string::npos) {
            at_ += end.size();
        }
    }

    // The last two significant tokens decide whether a literal is a request's key.
    void Significant(const std::string& token) {
        beforeLast_ = std::move(last_);
        last_ = token;
    }

    void Name() {
        std::string name;
        bool qualified = false;
        for (;;) {
            while (at_ < text_.size() && IsNameCharacter(text_[at_])) {
                name += text_[at_++];
            }
            if (StartsWith("::") && at_ + 2 < text_.size() && IsNameStart(text_[at_ + 2])) {
                name += "::";
                at_ += 2;
                qualified = true;
                continue;
            }
            break;
        }
        // A prefix of a literal: u8"...", u"...", U"...", L"...", R"(...)", u8R"(...)".
        if (at_ < text_.size() && text_[at_] == '"' && !qualified) {
            static const char* const kPrefixes[] = {"u8",  "u",  "U",  "L", "R",
                                                    "u8R", "uR", "UR", "LR"};
            for (const char* prefix : kPrefixes) {
                if (name == prefix) {
                    if (name.back() == 'R') {
                        RawLiteral();
                    } else {
                        Literal();
                    }
                    return;
                }
            }
        }
        if (qualified) {
            scan_.names.push_back({name, line_});
        }
        Significant(qualified ? name.substr(name.rfind(':') + 1) : name);
    }

    void Literal() {
        const std::size_t line = line_;
        ++at_;  // the opening quote
        std::string content;
        while (at_ < text_.size() && text_[at_] != '"' && text_[at_] != '\n') {
            if (text_[at_] == '\\' && at_ + 1 < text_.size()) {
                const char next = text_[at_ + 1];
                if (next == '"' || next == '\\' || next == '\'') {
                    content += next;
                } else {
                    content += text_.substr(at_, 2);
                    line_ += next == '\n' ? 1 : 0;
                }
                at_ += 2;
                continue;
            }
            content += text_[at_++];
        }
        if (at_ < text_.size() && text_[at_] == '"') {
            ++at_;
        }
        AddLiteral(std::move(content), line);
    }

    void RawLiteral() {
        const std::size_t line = line_;
        ++at_;  // the quote
        const std::size_t open = text_.find('(', at_);
        if (open == std::string::npos || open - at_ > 16) {
            return;  // not a raw literal after all
        }
        const std::string end = ")" + text_.substr(at_, open - at_) + "\"";
        at_ = open + 1;
        const std::size_t begin = at_;
        SkipTo(end, false);
        std::string content = text_.substr(begin, at_ - begin);
        at_ = std::min(text_.size(), at_ + end.size());
        AddLiteral(std::move(content), line);
    }

    void CharacterLiteral() {
        ++at_;
        while (at_ < text_.size() && text_[at_] != '\'' && text_[at_] != '\n') {
            at_ += text_[at_] == '\\' ? 2 : 1;
        }
        at_ = std::min(text_.size(), at_ + 1);
        Significant("'");
    }

    void AddLiteral(std::string content, std::size_t line) {
        const bool requested = last_ == "(" && IsRequestFunction(beforeLast_);
        scan_.literals.push_back({std::move(content), line, requested});
        Significant("\"");
    }

    const std::string& text_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::string last_;
    std::string beforeLast_;
    SourceScan scan_;
};

}  // namespace

SourceScan ScanSource(const std::string& text) {
    return Scanner(text).Run();
}

}  // namespace locmgr::analysis
