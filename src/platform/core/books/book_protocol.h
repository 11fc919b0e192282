// The lines in which the book reader (`lirovan-kitap-oku FILE [--resimsiz]`) hands one book over: one JSON
// object a line on its standard output, UTF-8. FILE may be a folder with an index.html. The program that
// started it believes none of them before it has checked them.
//
//     {"tur":"ilerleme","yapilan":3,"toplam":40}             any time; toplam 0: not known yet
//     {"tur":"kitap","ad":"…","altad":"…","dizi":"…, 2","yazarlar":[{"ad":"…","rol":"aut"}],
//      "dil":"tr","kimlik":"urn:…","ozet":"<64 hex digits>","bicim":"EPUB 3","basliklardan":false} before
//      pictures and topics
//     {"tur":"resim","no":0,"ad":"fig1.png","bicim":"image/png","veri":"<base64>"}   before its topic
//     {"tur":"konu","no":0,"ust":-1,"derinlik":0,"baslik":"Giriş","metin":"<P>…</P>","sozcuk":123}
//     {"tur":"atlanan","ad":"kapak.xhtml","neden":"kapak"}   any time: left out, and why (Turkish)
//     {"tur":"hata","metin":"…"}                             last on failure (Turkish); exit status 1
//     {"tur":"bitti","konu":12,"resim":3}                    last on success; exit status 0
//
// - "kitap": values that the source does not give are "" or an empty list; "rol" is a MARC relator code, ""
//   where the source names none. "ozet" is the SHA-256 of the file's bytes (of a folder: of its index).
//   "basliklardan": the outline was made from headings or documents, since the source has no contents list,
//   or one that names less than a tenth of its documents.
// - "konu": entries of the outline in reading order, numbered from 0 without gaps. "ust" is the number of an
//   earlier entry or -1, "derinlik" that of "ust" plus 1, or 0. An empty "metin" is a level without text of
//   its own; any other text begins and ends with markup. "sozcuk": runs of letters and digits in the text.
// - "resim": numbered from 0 without gaps, each used picture once.
// - In texts, links between topics are href="konu:NO" or href="konu:NO#PLACE", where NO may come later, and
//   links inside a topic href="#PLACE"; pictures are src="resim:NO"; places are ID attributes made of ASCII
//   letters, digits, "-" and "_". Foreign addresses are text. Paragraphs are "<P>" without attributes.
// - "baslik" is plain text, not markup. With --resimsiz pictures are counted and numbered, but have no lines.
//
// Exit status 2: wrong call; nothing is printed on standard output.
#pragma once

#include <QtGlobal>

namespace lirovan::platform {

/// The program's name, beside the programs that start it.
inline constexpr char BookReaderProgram[] = "lirovan-kitap-oku";

// Values of "tur".
inline constexpr char BookLineProgress[] = "ilerleme";
inline constexpr char BookLineBook[] = "kitap";
inline constexpr char BookLinePicture[] = "resim";
inline constexpr char BookLineTopic[] = "konu";
inline constexpr char BookLineSkipped[] = "atlanan";
inline constexpr char BookLineFailure[] = "hata";
inline constexpr char BookLineDone[] = "bitti";

// What one book may hold; the reader refuses or leaves out what is larger, the receiver refuses it.
inline constexpr qint64 MaximalBookTopics = 50'000;
inline constexpr qint64 MaximalBookDepth = 32;                     ///< levels of the outline
inline constexpr qint64 MaximalTopicBytes = qint64(32) << 20;      ///< UTF-8 of one topic text
inline constexpr qint64 MaximalPictureBytes = qint64(16) << 20;    ///< of one picture, before base64
inline constexpr qint64 MaximalPicturesBytes = qint64(1) << 30;    ///< of all pictures of a book
inline constexpr qint64 MaximalBookTextBytes = qint64(256) << 20;  ///< of all topic texts of a book
inline constexpr qint64 MaximalBookLineBytes = qint64(64) << 20;   ///< one line, with its JSON escapes
/// Media types that a picture may have.
inline constexpr const char* BookPictureTypes[] = {"image/png", "image/jpeg", "image/gif", "image/svg+xml"};

}  // namespace lirovan::platform
