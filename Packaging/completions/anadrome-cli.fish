# Completion of anadrome-cli for fish.
set -l commands make reverse
set -l none "not __fish_seen_subcommand_from $commands"
set -l any "__fish_seen_subcommand_from $commands"
set -l make "__fish_seen_subcommand_from make"

complete -c anadrome-cli -n $none -f -a make -d "Make a movie of a clip backward, alone or joined to it"
complete -c anadrome-cli -n $none -f -a reverse -d "Only reverse a clip"
complete -c anadrome-cli -n $none -l version -d "Print the version and exit"
complete -c anadrome-cli -s h -l help -d "Print the options and exit"

complete -c anadrome-cli -n $any -s o -l output -r -F -d "The movie to write"
complete -c anadrome-cli -n $any -l file-type -x -a "mov mp4" -d "The movie's container"
complete -c anadrome-cli -n $any -s f -l force -d "Replace the movie if it exists"
complete -c anadrome-cli -n $any -l json -d "Print progress and result as one JSON object a line"
complete -c anadrome-cli -n $any -s q -l quiet -d "Print nothing but errors"
complete -c anadrome-cli -n $any -s v -l verbose -d "Print diagnostics to standard error"

complete -c anadrome-cli -n $make -l output-type -x -a "reverse reverse-forward forward-reverse" \
    -d "What the movie is made of"
complete -c anadrome-cli -n $make -l reverse-speed -x -a "0.5 1 2" -d "How fast the backward part runs, 0.1 to 10"
complete -c anadrome-cli -n $make -l normal-speed -x -a "0.5 1 2" -d "How fast the forward part runs, 0.1 to 10"
complete -c anadrome-cli -n $make -l quality -x -a "low medium high" -d "Largest size"
complete -c anadrome-cli -n $make -l keep-metadata -d "Keep the clip's place, date and camera"
