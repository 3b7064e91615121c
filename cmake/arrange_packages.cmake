# cmake/arrange_packages.cmake - run by CPack before it packs: Debian's interpreter looks in another folder for its own
# packages than for those in /usr/local, and a package has its licence and changes in a folder of its own
file(GLOB folders ${CPACK_TEMPORARY_DIRECTORY}/python/usr/lib/python3.*)
foreach(folder ${folders})
  file(MAKE_DIRECTORY ${CPACK_TEMPORARY_DIRECTORY}/python/usr/lib/python3)
  file(RENAME ${folder}/dist-packages ${CPACK_TEMPORARY_DIRECTORY}/python/usr/lib/python3/dist-packages)
  file(REMOVE_RECURSE ${folder})
endforeach()
