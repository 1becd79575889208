// Lists the songs of a show or a log of any version, with the toolkit. The file is encrypted with an empty
// key, or not encrypted.
//
//   songs FILE

#include <toolkit/document/open.h>
#include <toolkit/document/summary.h>
#include <toolkit/error.h>

#include <iostream>

void Print(const zuna_toolkit::SongSummary& song) { std::cout << song.number << ": " << song.name << '\n'; }

int main(int argc, char** argv) {
  const char* path = argc == 2 ? argv[1] : "";
  try {
    zuna_toolkit::SummariseSongs(
        zuna_toolkit::OpenDocument(path, CipherKey{}, zuna_toolkit::Accept::kEncryptedOrPlain), Print);
  } catch (const zuna_toolkit::Error& error) {
    std::cerr << error.what() << " [" << zuna_toolkit::CodeText(error.code()) << "]\n";
    return 1;
  }
  return 0;
}
