# Completion of anadrome for fish.
complete -c anadrome -s h -l help -d "Print the options and exit"
complete -c anadrome -s v -l version -d "Print the version and exit"
