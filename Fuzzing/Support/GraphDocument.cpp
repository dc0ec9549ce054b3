// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Fuzzing/Support/GraphDocument.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <vector>

#include "Fuzzing/Support/Target.h"

namespace quirebind::fuzzing {
namespace {

constexpr std::array<std::string_view, 96> kKeys{
    "Type",
    "Subtype",
    "Parent",
    "Kids",
    "Count",
    "MediaBox",
    "CropBox",
    "Rotate",
    "Resources",
    "Contents",
    "Annots",
    "AA",
    "A",
    "Dest",
    "D",
    "S",
    "Next",
    "P",
    "Rect",
    "Popup",
    "IRT",
    "T",
    "TU",
    "V",
    "DV",
    "FT",
    "Ff",
    "DA",
    "DR",
    "Font",
    "Fields",
    "CO",
    "NeedAppearances",
    "SigFlags",
    "XFA",
    "Q",
    "MaxLen",
    "Opt",
    "TI",
    "I",
    "AP",
    "AS",
    "N",
    "MK",
    "OC",
    "OCGs",
    "OFF",
    "ON",
    "BaseState",
    "Order",
    "RBGroups",
    "Locked",
    "Usage",
    "Event",
    "Category",
    "Intent",
    "Name",
    "VE",
    "Properties",
    "XObject",
    "K",
    "ID",
    "ParentTree",
    "Nums",
    "Names",
    "Limits",
    "IDTree",
    "RoleMap",
    "ClassMap",
    "C",
    "R",
    "Pg",
    "Obj",
    "Stm",
    "MCID",
    "Headers",
    "O",
    "Lang",
    "Alt",
    "ActualText",
    "StructParent",
    "StructParents",
    "NS",
    "Namespaces",
    "SD",
    "B",
    "F",
    "Length",
    "Filter",
    "JS",
    "Marked",
    "Suspects",
    "Threads",
    "Info",
    "OutputIntents",
    "DestOutputProfile",
};

constexpr std::array<std::string_view, 64> kNames{
    "Page",       "Pages",        "Annot",     "Widget",      "Link",
    "Text",       "Popup",        "GoTo",      "GoToR",       "URI",
    "Named",      "Hide",         "ResetForm", "SubmitForm",  "Thread",
    "JavaScript", "Tx",           "Btn",       "Ch",          "Sig",
    "Helv",       "ZaDb",         "Off",       "Yes",         "OCG",
    "OCMD",       "AllOn",        "AnyOff",    "And",         "Or",
    "Not",        "ON",           "OFF",       "Unchanged",   "View",
    "Design",     "All",          "Print",     "StructElem",  "StructTreeRoot",
    "MCR",        "OBJR",         "P",         "H1",          "Table",
    "TD",         "Document",     "Para",      "Layout",      "XYZ",
    "Fit",        "FitH",         "FitR",      "FlateDecode", "ASCIIHexDecode",
    "Crypt",      "XObject",      "Form",      "Font",        "Catalog",
    "Kids",       "VisiblePages", "a",         "b#20c",
};

constexpr std::array<std::string_view, 24> kStrings{
    "()",
    "(a)",
    "(b)",
    "(a.b)",
    "(/Helv 12 Tf 0 g)",
    "(/ZaDb 0 Tf)",
    "<FEFF0061>",
    "(\\376\\377\\000a)",
    "<6>",
    "(name \\(nested\\))",
    "(en-US)",
    "(de)",
    "(this.getField\\(\"a\"\\))",
    "(AFSimple_Calculate\\(\"SUM\", new Array\\(\"a\",\"b\"\\)\\))",
    "(\r\n)",
    "<EFBBBF61>",
    "(z)",
    "(m)",
    "(\\\\)",
    "(0)",
    "(Story)",
    "(12)",
    "(ID.1)",
    "(ID.2)",
};

constexpr std::array<std::string_view, 14> kPlain{
    "null", "true", "false", "0",          "1",   "2",   "3",
    "-1",   "7",    "65536", "2147483648", "0.5", "100", "99999999999999999999",
};

class GraphWriter {
 public:
    explicit GraphWriter(std::string_view bytes) : choices_(bytes) {}

    std::string write() {
        out_ = "%PDF-1.7\n%\x80\x80\x80\x80\n";
        count_ = kFixed + 1 + choices_.below(kMostObjects - kFixed);
        begin();
        out_ += "<</Type/Catalog/Pages 2 0 R/AcroForm ";
        value(0);
        out_ += "/StructTreeRoot ";
        value(0);
        out_ += "/OCProperties<</OCGs ";
        value(0);
        out_ += "/D ";
        value(0);
        out_ += ">>/Names<</Dests ";
        value(0);
        out_ += ">>";
        entries(0);
        out_ += ">>";
        end();
        begin();
        out_ += "<</Type/Pages/Count 2/MediaBox[0 0 9 9]/Kids[3 0 R 4 0 R]>>";
        end();
        for (int page = 0; page < 2; ++page) {
            begin();
            out_ += "<</Type/Page/Parent 2 0 R/Annots ";
            value(0);
            out_ += "/StructParents " + std::to_string(page);
            entries(0);
            out_ += ">>";
            end();
        }
        while (offsets_.size() < count_) object();
        finish();
        return std::move(out_);
    }

 private:
    static constexpr std::size_t kFixed = 4;
    static constexpr std::size_t kMostObjects = 40;
    static constexpr int kDeepest = 4;
    static constexpr std::size_t kMostElements = 6;
    static constexpr std::size_t kLongest = 16384;

    void begin() {
        offsets_.push_back(out_.size());
        out_ += std::to_string(offsets_.size()) + " 0 obj\n";
    }
    void end() { out_ += "\nendobj\n"; }

    void object() {
        begin();
        if (choices_.below(6) == 0) {
            out_ += "<<";
            entries(0);
            out_ += "/Length 7>>\nstream\n0 0 m S\nendstream";
        } else {
            value(0);
        }
        end();
    }

    void entries(int depth) {
        for (std::size_t left = choices_.below(kMostElements); left > 0; --left) {
            out_ += '/';
            out_ += kKeys.at(choices_.below(kKeys.size()));
            out_ += ' ';
            value(depth + 1);
        }
    }

    void value(int depth) {
        const bool simple = depth >= kDeepest || out_.size() > kLongest;
        switch (choices_.below(8)) {
            case 0:
            case 1:
                out_ += std::to_string(1 + choices_.below(count_ + 1)) + " 0 R ";
                return;
            case 2:
                out_ += '/';
                out_ += kNames.at(choices_.below(kNames.size()));
                return;
            case 3:
                out_ += kStrings.at(choices_.below(kStrings.size()));
                return;
            case 4:
                out_ += kPlain.at(choices_.below(kPlain.size()));
                return;
            case 5:
                if (simple) break;
                out_ += '[';
                for (std::size_t left = choices_.below(kMostElements); left > 0; --left) {
                    value(depth + 1);
                    out_ += ' ';
                }
                out_ += ']';
                return;
            default:
                if (simple) break;
                out_ += "<<";
                entries(depth);
                out_ += ">>";
                return;
        }
        out_ += "null";
    }

    void finish() {
        const std::size_t table = out_.size();
        out_ += "xref\n0 " + std::to_string(offsets_.size() + 1) + "\n0000000000 65535 f \n";
        for (const std::size_t offset : offsets_) {
            std::string digits = std::to_string(offset);
            digits.insert(0, 10 - digits.size(), '0');
            out_ += digits + " 00000 n \n";
        }
        out_ += "trailer\n<</Size " + std::to_string(offsets_.size() + 1) +
                "/Root 1 0 R>>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
    }

    Choices choices_;
    std::size_t count_ = 0;
    std::string out_;
    std::vector<std::size_t> offsets_;
};

}  // namespace

std::string graphDocument(std::string_view bytes) {
    return GraphWriter(bytes).write();
}

}  // namespace quirebind::fuzzing
