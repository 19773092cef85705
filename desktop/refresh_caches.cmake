# tavilo_refresh_caches(SHARE): brings the mime database, the menu's cache
# and the icon cache under SHARE up to date; a tool that is missing is passed
# over, as the desktop that would read its cache is then missing too.
function(tavilo_refresh_caches share)
  find_program(update_mime update-mime-database)
  find_program(update_desktop update-desktop-database)
  find_program(update_icons gtk-update-icon-cache)
  if(update_mime AND IS_DIRECTORY ${share}/mime/packages)
    execute_process(COMMAND ${update_mime} ${share}/mime)
  endif()
  if(update_desktop AND IS_DIRECTORY ${share}/applications)
    execute_process(COMMAND ${update_desktop} -q ${share}/applications)
  endif()
  if(update_icons AND EXISTS ${share}/icons/hicolor/index.theme)
    execute_process(COMMAND ${update_icons} -q -t -f ${share}/icons/hicolor)
  endif()
endfunction()
