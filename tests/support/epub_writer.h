// Small EPUB files, and the lines that the book reader gives for them.
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "support/zip_writer.h"

namespace lirovan::test {

struct EpubDocument {
    QByteArray name, body;
    QByteArray head = {};     ///< into <head>
    QByteArray whole = {};    ///< instead of head and body
    QByteArray itemref = {};  ///< attributes of the itemref
};

struct Epub {
    std::vector<EpubDocument> documents;
    QByteArray navigation = {};  ///< the <ol> of the contents list; empty: no navigation document
    QByteArray ncx = {};         ///< the navPoints
    QByteArray metadata = "<dc:title>Deneme</dc:title><dc:language>tr</dc:language>";
    std::vector<ZipEntry> files = {};
};

inline QByteArray page(const EpubDocument& document) {
    return document.whole.isEmpty()
               ? "<html xmlns=\"http://www.w3.org/1999/xhtml\" xmlns:epub=\"http://www.idpf.org/2007/ops\">"
                 "<head><title>Sayfa</title>" +
                     document.head + "</head><body>" + document.body + "</body></html>"
               : document.whole;
}

inline std::vector<ZipEntry> entries(const Epub& book) {
    QByteArray manifest, spine;
    std::vector<ZipEntry> made{{"mimetype", "application/epub+zip"},
                               {"META-INF/container.xml",
                                "<container><rootfiles><rootfile full-path=\"k/paket.opf\" "
                                "media-type=\"application/oebps-package+xml\"/></rootfiles></container>"}};
    for (const EpubDocument& document : book.documents) {
        const QByteArray type = document.name.endsWith(".svg") ? "image/svg+xml" : "application/xhtml+xml";
        manifest +=
            "<item id=\"" + document.name + "\" href=\"" + document.name + "\" media-type=\"" + type + "\"/>";
        spine += "<itemref idref=\"" + document.name + "\" " + document.itemref + "/>";
        made.push_back({"k/" + document.name, page(document)});
    }
    if (!book.navigation.isEmpty()) {
        manifest +=
            "<item id=\"nav\" href=\"nav.xhtml\" media-type=\"application/xhtml+xml\" properties=\"nav\"/>";
        made.push_back(
            {"k/nav.xhtml", page({"nav", "<nav epub:type=\"toc\">" + book.navigation + "</nav>"})});
    }
    if (!book.ncx.isEmpty()) {
        manifest += "<item id=\"ncx\" href=\"toc.ncx\" media-type=\"application/x-dtbncx+xml\"/>";
        made.push_back({"k/toc.ncx", "<ncx><navMap>" + book.ncx + "</navMap></ncx>"});
    }
    const QByteArray version = book.ncx.isEmpty() ? "3.0" : "2.0";
    made.push_back({"k/paket.opf", "<package version=\"" + version +
                                       "\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><metadata>" +
                                       book.metadata + "</metadata><manifest>" + manifest +
                                       "</manifest><spine toc=\"ncx\">" + spine + "</spine></package>"});
    made.insert(made.end(), book.files.begin(), book.files.end());
    return made;
}

}  // namespace lirovan::test
