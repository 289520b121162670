# Copies the program's files from SRC to DST.
# Files that hosts edit (question files, settings) are copied only when
# missing, so a rebuild or a new install never replaces a host's questions;
# the rest follow the sources.
set(host_files TandrelLines.txt TandrelPhrases.txt Tandrel.cfg)
set(program_files MatchMusic.mp3 Buzzer.wav HowToPlayTandrel.rtf tandrel.png)
file(MAKE_DIRECTORY ${DST})
foreach(f IN LISTS host_files)
  if(EXISTS ${SRC}/${f} AND NOT EXISTS ${DST}/${f})
    file(COPY ${SRC}/${f} DESTINATION ${DST})
  endif()
endforeach()
foreach(f IN LISTS program_files)
  if(EXISTS ${SRC}/${f})
    file(COPY ${SRC}/${f} DESTINATION ${DST})
  endif()
endforeach()
