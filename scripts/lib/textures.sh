# lost_textures SCENE OUT JOB-FOLDER: the files that the package in the folder OUT of a run names
# and the scene has, but the job has not, one a line. A file that the scene names and nobody has is
# missing on purpose. SCENE is a scene file of the stand-in host.
lost_textures() {
    local home name path place folders
    home=$(dirname "$1")
    # Where the host looks for a file that is not where its path says.
    readarray -t folders < <(jq -r --arg home "$home" '
        ("", (.map_paths // [])[]) | if startswith("/") then . else "\($home)/\(.)" end' "$1")
    while IFS= read -r name; do
        [[ ! -e $3/textures/$name ]] || continue
        while IFS= read -r path; do
            for place in "${path#[Zz]:}" "$home/$path" "${folders[@]/%//$name}"; do
                [[ ! -f $place ]] || { printf '%s\n' "$name" && break 2; }
            done
        done < <(jq -r --arg name "$name" '
            .. | strings | gsub("\\\\"; "/") | select(split("/")[-1] == $name)' "$1")
    done < <(jq -r '.. | objects | .filepath? // empty' "$2/service/jobs/0001/package.json" | sort -u)
}
