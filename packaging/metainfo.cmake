# Makes the AppStream metainfo. AppStream wants pictures by addresses on the web: where those of docs/pictures are
# published, QUORL_PICTURES_URL names the folder, and the metainfo shows them; without it, it has none.
#
#   cmake -DQUORL_PICTURES_URL=https://... -DOUT=FILE -P packaging/metainfo.cmake
set(QUORL_SCREENSHOTS "")
if(QUORL_PICTURES_URL)
  set(kind " type=\"default\"")
  foreach(picture "quorl.png|A report with tags and frozen titles" "dialogs.png|Dialogs" "page.png|A printed page"
                  "help.png|The help book")
    string(REPLACE "|" ";" parts "${picture}")
    list(GET parts 0 name)
    list(GET parts 1 caption)
    string(APPEND QUORL_SCREENSHOTS "    <screenshot${kind}>\n      <caption>${caption}</caption>\n"
           "      <image type=\"source\">${QUORL_PICTURES_URL}/${name}</image>\n    </screenshot>\n")
    set(kind "")
  endforeach()
  set(QUORL_SCREENSHOTS "  <screenshots>\n${QUORL_SCREENSHOTS}  </screenshots>\n")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/org.quorl.Quorl.metainfo.xml.in ${OUT} @ONLY)
