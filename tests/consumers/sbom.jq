# SPDX-License-Identifier: MIT

# Is this a document of SPDX 2.3?
def string($pattern): type == "string" and test($pattern);
def identifier: string("^SPDXRef-[A-Za-z0-9.-]+$");
def licence: string("^(NOASSERTION|[A-Za-z0-9.-]+( WITH [A-Za-z0-9.-]+)?)$");
def checksum: .algorithm == "SHA256" and (.checksumValue | string("^[0-9a-f]{64}$"));

def package:
    (.SPDXID | identifier) and (.name | string(".")) and (.versionInfo | string("^[0-9]+([.][0-9]+)*$"))
    and .downloadLocation == "NOASSERTION" and .filesAnalyzed == false
    and (.licenseConcluded | licence) and (.licenseDeclared | licence) and (.copyrightText | string("."))
    and all(.checksums[]?; checksum);

def verbs: ["DESCRIBES", "CONTAINED_BY", "DEPENDENCY_OF", "BUILD_TOOL_OF"];

.spdxVersion == "SPDX-2.3" and .dataLicense == "CC0-1.0" and .SPDXID == "SPDXRef-DOCUMENT"
and (.name | string(".")) and (.documentNamespace | string("^urn:uuid:[0-9a-f-]{36}$"))
and (.creationInfo.created | string("^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z$"))
and (.creationInfo.creators | length > 0 and all(string("^(Tool|Person|Organization): .")))
and all(.packages[]; package)
and ([.SPDXID, .packages[].SPDXID] as $known
    | ($known | length == (unique | length))
    and all(.relationships[];
        (.spdxElementId | IN($known[])) and (.relatedSpdxElement | IN($known[])) and (.relationshipType | IN(verbs[]))))
# Each package says how it belongs to the rest.
and ([.packages[1:][].SPDXID] - [.relationships[].spdxElementId] == [])
