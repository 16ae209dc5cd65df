# Completion of tandem-trim for fish. The program itself prints the words.
function __tandem_trim_words
    set -l words (commandline -opc)
    set -l typed "$(commandline -ct)"
    # A quote may still be open.
    set -l word "$(string unescape -- $typed; or string unescape -- $typed\"; or string unescape -- $typed\')"
    set -l candidates (command $words[1] --complete $words[2..-1] $word 2>/dev/null)
    if set -q candidates[1]
        printf '%s\n' $candidates
    else
        __fish_complete_path $typed
    end
end
complete -c tandem-trim -f -a '(__tandem_trim_words)'
